import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;
import java.util.Arrays;

/**
 * Times loops against each other: round by round in turn, so that what disturbs one disturbs the others too, and told
 * as medians, so that a disturbed round does not count. The clock is the thread's own processor time, which does not run
 * while other programs do.
 */
final class Rounds {
    /** Makes this many calls; returns something that depends on them. */
    interface Loop {
        long run(int calls);
    }

    /** Long enough that the clock does not count; short, so that a loop and its twin meet the same disturbances. */
    private static final double ROUND_NANOSECONDS = 2.5e5;
    private static final double WARM_UP_NANOSECONDS = 1e8;

    private static final ThreadMXBean THREADS = ManagementFactory.getThreadMXBean();

    static long sink;

    private Rounds() {}

    /**
     * The nanoseconds of one call, by loop and round.
     *
     * @param mostCalls how often a loop may be called in a round, where calls leave something behind
     */
    static double[][] time(int rounds, int mostCalls, Loop... loops) {
        int calls = mostCalls;
        for (Loop loop : loops) calls = Math.min(calls, callsOfRound(loop, mostCalls));
        double[][] nanoseconds = new double[loops.length][rounds];
        for (int round = 0; round < rounds; ++round) {
            for (int turn = 0; turn < loops.length; ++turn) {
                int index = (round + turn) % loops.length;
                nanoseconds[index][round] = timed(loops[index], calls);
            }
        }
        return nanoseconds;
    }

    static double median(double[] values) {
        double[] sorted = values.clone();
        Arrays.sort(sorted);
        return sorted[sorted.length / 2];
    }

    /** The time of the tenth that was disturbed least. */
    static double undisturbed(double[] values) {
        double[] sorted = values.clone();
        Arrays.sort(sorted);
        return sorted[sorted.length / 10];
    }

    /** The median of the ratios of each round: both of a round met the same disturbances. */
    static double ratio(double[] values, double[] others) {
        double[] ratios = new double[values.length];
        for (int round = 0; round < values.length; ++round) ratios[round] = values[round] / others[round];
        return median(ratios);
    }

    /** Warms the loop up, and finds how many calls fill a round then. */
    private static int callsOfRound(Loop loop, int mostCalls) {
        int calls = 1;
        for (double spent = 0; spent < WARM_UP_NANOSECONDS; ) {
            double nanoseconds = calls * timed(loop, calls);
            spent += nanoseconds;
            if (nanoseconds < ROUND_NANOSECONDS / 2) calls = Math.min(2 * calls, mostCalls);
            if (nanoseconds > ROUND_NANOSECONDS * 2) calls = Math.max(calls / 2, 1);
        }
        return calls;
    }

    private static double timed(Loop loop, int calls) {
        long start = THREADS.getCurrentThreadCpuTime();
        sink += loop.run(calls);
        return (double) (THREADS.getCurrentThreadCpuTime() - start) / calls;
    }
}

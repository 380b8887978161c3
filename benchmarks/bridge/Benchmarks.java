/**
 * Runs the benchmarks of the bridge and of the proxies. The arguments: the library of the twins, and how many rounds
 * each loop is timed.
 */
public final class Benchmarks {
    private Benchmarks() {}

    public static void main(String[] arguments) {
        int rounds = arguments.length > 1 ? Integer.parseInt(arguments[1]) : 1001;
        Subjects subjects = new Subjects();  // loads the bridge and the SDK, which the twins call too
        System.load(arguments[0]);
        BridgeBenchmark.run(subjects, rounds);
        ProxyBenchmark.run(subjects, rounds);
    }
}

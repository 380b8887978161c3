/** Shows how far a run is: on one line of a terminal, or a line per tenth where the output is a file. */
final class ProgressBar {
    private static final int WIDTH = 40;

    private final double seconds;
    private final boolean terminal = System.console() != null;
    private int shown = -1;
    private String line = "";

    ProgressBar(double seconds) {
        this.seconds = seconds;
    }

    /** To be called as often as one likes; prints when a simulated second has passed. */
    void show(double second, int people) {
        line = line(second, people);
        int step = (int) (terminal ? second : 10 * second / seconds);
        if (step == shown) return;
        shown = step;
        System.out.print(terminal ? "\r" + line : line + System.lineSeparator());
        System.out.flush();
    }

    void finish() {
        System.out.println(terminal ? "\r" + line : line);
    }

    private String line(double second, int people) {
        int filled = (int) Math.min(WIDTH, WIDTH * second / seconds);
        return String.format(
                "[%s%s] %3d:%02d  %d people inside ",
                "#".repeat(filled), "-".repeat(WIDTH - filled), (int) second / 60, (int) second % 60, people);
    }
}

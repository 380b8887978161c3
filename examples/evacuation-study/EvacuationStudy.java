import com.kelvar.pedflux.*;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Locale;

/** How long does it take to empty a library of two floors, and what if its side door stays shut? */
public final class EvacuationStudy {
    private static final int[] SEEDS = {1, 2, 3, 4, 5};

    private EvacuationStudy() {}

    public static void main(String[] arguments) throws IOException {
        Path output = Files.createDirectories(Path.of(arguments.length > 0 ? arguments[0] : "output"));
        study("Both doors", output.resolve("both-doors"), true);
        study("Side door shut", output.resolve("side-door-shut"), false);
    }

    private static void study(String title, Path output, boolean sideDoorOpen) throws IOException {
        Files.createDirectories(output);
        try (Project project = Project.create()) {
            project.setDurationInSeconds(600);
            Library library = new Library(project);
            if (sideDoorOpen) {
                Readers.leave(project, library, library.mainEntrance, library.sideDoor);
            } else {
                Readers.leave(project, library, library.mainEntrance);
            }

            double[] times = new double[SEEDS.length];
            for (int i = 0; i < SEEDS.length; i++) times[i] = evacuationTime(project, SEEDS[i], output);
            Arrays.sort(times);

            System.out.printf(Locale.ROOT, "%s: %d people, %d runs%n", title,
                    Readers.UPSTAIRS + Readers.DOWNSTAIRS, SEEDS.length);
            System.out.printf(Locale.ROOT, "  last one out      %6.1f s to %.1f s, median %.1f s%n",
                    times[0], times[times.length - 1], times[times.length / 2]);
            Report.of(project, project.getSimulationRun(runName(SEEDS[0])).getId(), library, output);
            project.save(output.resolve("library.json").toString());
        }
    }

    /** Seconds until the last person is out. The run's results stay in a file of its own. */
    private static double evacuationTime(Project project, int seed, Path output) {
        SimulationOptions options = new SimulationOptions();
        options.setRandomSeed(seed);
        String results = output.resolve("seed-" + seed + ".pfdb").toString();
        try (Simulation simulation = Simulation.create(project, runName(seed), results, options)) {
            while (!simulation.isDone()) {
                try (Scope frame = new Scope()) {
                    simulation.step();
                }
            }
            if (simulation.getAllAgents().length > 0) {
                throw new IllegalStateException("Not everybody was out in time in the run with seed " + seed);
            }
            simulation.stop();
            return simulation.getClock().getCurrentSecond();
        }
    }

    private static String runName(int seed) {
        return "Seed " + seed;
    }
}

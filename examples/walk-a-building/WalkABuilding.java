import com.kelvar.pedflux.Agent;
import com.kelvar.pedflux.AverageDensityMapQuery;
import com.kelvar.pedflux.Clock;
import com.kelvar.pedflux.Database;
import com.kelvar.pedflux.FrameSummary;
import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.Graph;
import com.kelvar.pedflux.Map2d;
import com.kelvar.pedflux.MaxDensityMapQuery;
import com.kelvar.pedflux.PixelValue;
import com.kelvar.pedflux.PopulationCountGraphQuery;
import com.kelvar.pedflux.Project;
import com.kelvar.pedflux.Sdk;
import com.kelvar.pedflux.Simulation;
import com.kelvar.pedflux.SimulationOptions;
import com.kelvar.pedflux.SimulationRun;
import com.kelvar.pedflux.ValueMap2d;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.HashMap;
import java.util.Map;

/**
 * Walks a crowd through a building: reads its plan, fills it with visitors or empties it, and writes the run's
 * database, a picture of the average density, the population over time and a summary.
 */
public final class WalkABuilding {
    private static final String RUN = "Run";

    private WalkABuilding() {}

    public static void main(String[] arguments) throws IOException {
        try {
            run(Options.parse(arguments));
        } catch (PlanException | com.kelvar.pedflux.Exception e) {
            System.err.println(e.getMessage().strip());
            System.exit(2);
        }
    }

    private static void run(Options options) throws IOException {
        Plan plan = PlanReader.read(options.plan(), options.openings());
        Files.createDirectories(options.output());
        Path databaseFile = options.output().resolve("run.pfdb");
        Files.deleteIfExists(databaseFile);

        Sdk.init();
        try (Project project = Project.create()) {
            project.setDurationInSeconds(options.minutes() * 60);
            BuildingModel building = new BuildingModel(project, plan);
            if (options.evacuation()) {
                building.addEvacuation(plan, options.people());
            } else {
                building.addJourney(plan, options.people(), options.arrivalSeconds());
            }
            simulate(project, options, databaseFile);
            report(project, building, plan, options.output(), databaseFile);
        }
        Sdk.fini();
    }

    private static void simulate(Project project, Options options, Path databaseFile) {
        try (SimulationOptions settings = new SimulationOptions()) {
            settings.setRandomSeed(options.seed());
            settings.setThreadCount(Runtime.getRuntime().availableProcessors());
            try (Simulation simulation = Simulation.create(project, RUN, databaseFile.toString(), settings);
                    Clock clock = simulation.getClock()) {
                ProgressBar progress = new ProgressBar(options.minutes() * 60);
                int inside = 0;
                while (!simulation.isDone()) {
                    try (FrameSummary frame = simulation.step()) {
                        inside += count(frame.getCreatedAgents()) - count(frame.getDeletedAgents());
                    }
                    progress.show(clock.getCurrentSecond(), inside);
                }
                progress.finish();
                simulation.stop();
            }
        }
    }

    private static int count(Agent[] agents) {
        for (Agent agent : agents) agent.close();
        return agents.length;
    }

    private static void report(Project project, BuildingModel building, Plan plan, Path output, Path databaseFile)
            throws IOException {
        GlobalId run;
        try (SimulationRun simulationRun = project.getSimulationRun(RUN)) {
            run = simulationRun.getId();
        }
        GlobalId[] floors = plan.levels().stream().map(building::floor).toArray(GlobalId[]::new);

        Map<Plan.Level, ValueMap2d> averages = new HashMap<>();
        try (AverageDensityMapQuery query = project.createAverageDensityMapQuery("Average density", run)) {
            query.setMapDisplayObjects(floors);
            com.kelvar.pedflux.Map[] maps = query.evaluate();
            for (int i = 0; i < maps.length; i++) averages.put(plan.levels().get(i), valueMap(maps[i]));
        }
        DensityPicture.write(plan, averages, output.resolve("density.png"));
        averages.values().forEach(ValueMap2d::close);

        try (PopulationCountGraphQuery query = project.createPopulationCountGraphQuery("Population", run)) {
            query.setAreaIds(floors);
            try (Graph graph = query.evaluate()) {
                graph.exportCsv(output.resolve("population.csv").toString());
                PopulationChart.write(graph, output.resolve("population.svg"));
            }
        }

        try (Database database = Database.open(databaseFile.toString())) {
            Summary summary = Summary.of(database, maximumDensity(project, run, floors));
            summary.write(output.resolve("summary.csv"));
            System.out.print(summary.table());
        }
        System.out.printf("Written to %s: run.pfdb, density.png, population.csv, population.svg, summary.csv%n", output);
    }

    private static double maximumDensity(Project project, GlobalId run, GlobalId[] floors) {
        double maximum = 0;
        try (MaxDensityMapQuery query = project.createMaxDensityMapQuery("Maximum density", run)) {
            query.setMapDisplayObjects(floors);
            for (com.kelvar.pedflux.Map map : query.evaluate()) {
                try (ValueMap2d values = valueMap(map)) {
                    for (PixelValue pixel : values.getPixelValues()) {
                        maximum = Math.max(maximum, pixel.getValue());
                        pixel.close();
                    }
                }
            }
        }
        return maximum;
    }

    private static ValueMap2d valueMap(com.kelvar.pedflux.Map map) {
        try (map;
                Map2d flat = map.asMap2d()) {
            return flat.asValueMap2d();
        }
    }
}

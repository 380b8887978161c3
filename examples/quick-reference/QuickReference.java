import com.kelvar.pedflux.*;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Locale;

/** The lines of docs/quick-reference.md and docs/java.md as one program. */
public final class QuickReference {
    private QuickReference() {}

    public static void main(String[] arguments) throws java.io.IOException {
        Path folder = Files.createTempDirectory("pedflux");
        try {
            project(folder.resolve("station.json").toString());
            try (Project project = Project.create()) {
                scene(project);
                events(project);
                rules(project);
                simulation(project, folder.resolve("morning.pfdb").toString());
                results(project, folder);
                errors(project);
            }
        } finally {
            try (var files = Files.list(folder)) {
                for (Path file : files.toList()) Files.delete(file);
            }
            Files.delete(folder);
        }
    }

    private static void project(String file) {
        try (Project project = Project.create()) {       // close() ends the project
            project.setDurationInSeconds(3600);          // the simulation lasts at most so long
            project.setStartTimeInSeconds(8 * 3600);     // after midnight
            project.save(file);
        }
        try (Project project = Project.open(file)) {
            for (Issue warning : project.getWarningsFromOpen()) System.err.println(warning.getDescription());
        }
    }

    private static void scene(Project project) {
        Floor hall = project.createFloor("Hall", MeshGeometry.createFlatPolygon(0, new Vec2d[] {
                new Vec2d(0, 0), new Vec2d(20, 0), new Vec2d(20, 10), new Vec2d(0, 10)}));
        Floor deck = project.createFloor("Deck", hall.getGeometry().translatedBy(new Vec3d(27, 3, 0)).asMeshGeometry());
        Stair stair = project.createStair("Stair", MeshGeometry.createRamp(new Vec3d(20, 0, 5), new Vec3d(27, 3, 5), 2));
        Barrier kiosk = project.createBarrier("Kiosk", MeshGeometry.createBox(new Vec3d(9, 0, 4), new Vec3d(11, 2.5, 6)));
        Portal west = project.createPortal("West", MeshGeometry.createVerticalRectangle(new Vec3d(0, 0, 4), new Vec3d(0, 2, 6)));
        Portal east = project.createPortal("East", MeshGeometry.createVerticalRectangle(new Vec3d(47, 3, 4), new Vec3d(47, 5, 6)));
        Zone ground = project.createZone("Ground", new GlobalId[] {hall.getId()});
        stair.setGated(true);                            // can be opened and closed
        kiosk.disable();                                 // takes no part in simulations
        project.removeAndDeleteObject(kiosk);            // refused while something refers to it

        expect(!project.hasObject("Kiosk") && west.isEnabled() && east.isEnabled() && ground.isEnabled(), "a scene");
    }

    private static void events(Project project) {
        GlobalId[] origins = {project.getPortal("West").getId()};
        GlobalId[] destinations = {project.getPortal("East").getId()};
        Profile profile = project.createProfile("Commuter");
        profile.setSpeedDistribution(Distribution.createNormal(1.34, 0.26, 0.8, 1.9));
        profile.setRadius(0.22);

        CountPopulationSource source = new CountPopulationSource(origins, destinations, 30);
        source.setPopulationArrival(PopulationArrival.createEvenlySpaced(20));
        Journey journey = project.createJourney("Commuters");
        journey.setPopulationSource(source);             // keeps a copy: set it again after a change
        journey.setProfile(profile.getId());

        Evacuation drill = project.createEvacuation("Drill");
        drill.setPopulationSource(new CountPopulationSource(new GlobalId[] {project.getFloor("Deck").getId()}, destinations, 5));
        drill.setPreMovementWaitDistribution(Distribution.createUniform(0, 30));
    }

    private static void rules(Project project) {
        GlobalId deck = project.getFloor("Deck").getId();
        Trigger rush = new WheneverTrigger(new TallyTrigger(new AreaPopulationTally(deck), ComparisonType.GREATER_THAN_OR_EQUAL, 50));
        GateAccess full = project.createGateAccess("Deck is full");
        full.setGatedObjects(new GlobalId[] {project.getStair("Stair").getId()});
        full.setTriggerRange(new BoundedTriggerRange(rush, new SimulationEndTrigger(0)));
        full.setCommandToClose(ConnectionObjectDirection.BALL_TO_BOX);
        AgentTest commuter = new ProfileTest(project.getProfile("Commuter").getId());
        AgentAction turnRed = new IfThenAction(commuter, new SetColorAction(Color.RED));
        project.getFloor("Deck").setEnterAction(turnRed);

        project.removeAndDeleteObject("Deck is full");
        project.getFloor("Deck").setEnterAction(null);
    }

    private static void simulation(Project project, String results) {
        GlobalId deck = project.getFloor("Deck").getId();
        SimulationOptions options = new SimulationOptions();
        options.setRandomSeed(7);                        // the same seed gives the same run
        options.setThreadCount(4);                       // changes the time it takes, not the results
        int most = 0;
        try (Simulation simulation = Simulation.create(project, "Morning", results, options)) {
            while (!simulation.isDone()) {
                try (Scope frame = new Scope()) {
                    simulation.step();
                    for (Agent agent : simulation.getAllAgents()) watch(agent.getPosition());
                }
                most = Math.max(most, simulation.getPopulation(deck));
                if (simulation.getClock().getCurrentSecond() == 60) simulation.closeGate(project.getStair("Stair").getId());
                if (simulation.getClock().getCurrentSecond() == 90) simulation.resetGate(project.getStair("Stair").getId());
            }
            simulation.stop();                           // finishes the file of results
        }
        expect(most >= 5, "people on the deck");
    }

    private static void watch(Vec3d position) {
        expect(position.getX() >= -0.1 && position.getX() <= 47.1, "a position in the building");
    }

    private static void results(Project project, Path folder) {
        GlobalId run = project.getSimulationRun("Morning").getId();
        GlobalId hall = project.getFloor("Hall").getId();
        AverageDensityMapQuery density = project.createAverageDensityMapQuery("Density", run);
        density.setMapDisplayObjects(new GlobalId[] {hall});
        density.setTimeRange(new TimeRange(0, 60));      // seconds after midnight
        ValueMap2d map = density.evaluate()[0].asMap2d().asValueMap2d();
        ColorMap2d picture = density.evaluate()[0].asMap2d().asColorMap2d();
        PopulationCountGraphQuery population = project.createPopulationCountGraphQuery("Population", run);
        population.setAreaIds(new GlobalId[] {hall});
        population.evaluate().exportCsv(folder.resolve("population.csv").toString());
        Table people = project.createAgentSummaryTableQuery("People", run).evaluate();
        System.out.printf(Locale.ROOT, "%d people, the first walked %.1f m%n", people.getRowCount(), people.getDoubleValue(0, 7));
        try (Database database = Database.open(folder.resolve("morning.pfdb").toString())) {
            for (AgentData agent : database.getFrameData(30.0)) watch(agent.getPosition());
        }

        expect(people.getRowCount() == 35 && map.getXPixelCount() > 0 && picture.getXPixelCount() > 0, "results");
    }

    private static void errors(Project project) {
        try {
            project.setDurationInSeconds(0);
        } catch (com.kelvar.pedflux.Exception refused) {
            System.out.println(refused.getMessage());    // the object, the value, and what would be right
        }
    }

    private static void expect(boolean holds, String what) {
        if (!holds) throw new IllegalStateException("Expected " + what);
    }
}

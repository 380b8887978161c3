import com.kelvar.pedflux.*;

/** The people in the library: how they walk, where they are, and when they set out. */
final class Readers {
    static final int UPSTAIRS = 140;
    static final int DOWNSTAIRS = 60;

    private Readers() {}

    static void leave(Project project, Library library, GlobalId... exits) {
        Profile profile = project.createProfile("Reader");
        profile.setSpeedDistribution(Distribution.createNormal(1.34, 0.26, 0.8, 1.9));

        evacuate(project, "From the reading room", library.readingRoom, UPSTAIRS, profile, exits);
        evacuate(project, "From the hall", library.hall, DOWNSTAIRS, profile, exits);
    }

    private static void evacuate(
            Project project, String name, GlobalId room, int people, Profile profile, GlobalId[] exits) {
        CountPopulationSource source = new CountPopulationSource(new GlobalId[] {room}, people);
        source.setDestinationsByLowestCost(exits);

        Evacuation evacuation = project.createEvacuation(name);
        evacuation.setPopulationSource(source);
        evacuation.setProfile(profile.getId());
        evacuation.setPreMovementWaitDistribution(Distribution.createTriangular(10, 25, 60));
    }
}

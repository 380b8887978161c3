import com.kelvar.pedflux.*;

/** A library of two floors: the reading room above, the hall and the foyer below, and a stair. Lengths are in metres. */
final class Library {
    private static final double UPSTAIRS = 3.5;

    final GlobalId readingRoom;
    final GlobalId hall;
    final GlobalId stair;
    final GlobalId mainEntrance;
    final GlobalId sideDoor;

    Library(Project project) {
        hall = floor(project, "Hall", 0, new double[][] {{0, 0}, {24, 0}, {24, 12}, {4, 12}, {4, 14}, {0, 14}});
        floor(project, "Foyer", 0, new double[][] {{26, 2}, {32, 2}, {32, 10}, {26, 10}});
        readingRoom = floor(project, "Reading room", UPSTAIRS,
                new double[][] {{0, 0}, {24, 0}, {24, 14}, {11, 14}, {11, 12}, {0, 12}});

        stair = project.createStair("Stair", MeshGeometry.createRamp(
                new Vec3d(4, 0, 13), new Vec3d(11, UPSTAIRS, 13), 1.6)).getId();
        project.createLink("Draught lobby", MeshGeometry.createRamp(
                new Vec3d(24, 0, 6), new Vec3d(26, 0, 6), 1.8));

        mainEntrance = portal(project, "Main entrance", new Vec3d(32, 0, 5), new Vec3d(32, 2.1, 7));
        sideDoor = portal(project, "Side door", new Vec3d(0, 0, 2), new Vec3d(0, 2.1, 3));
    }

    private static GlobalId floor(Project project, String name, double height, double[][] outline) {
        Vec2d[] corners = new Vec2d[outline.length];
        for (int i = 0; i < corners.length; i++) corners[i] = new Vec2d(outline[i][0], outline[i][1]);
        return project.createFloor(name, MeshGeometry.createFlatPolygon(height, corners)).getId();
    }

    private static GlobalId portal(Project project, String name, Vec3d corner, Vec3d oppositeCorner) {
        return project.createPortal(name, MeshGeometry.createVerticalRectangle(corner, oppositeCorner)).getId();
    }
}

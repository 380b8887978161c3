import com.kelvar.pedflux.*;

public class FirstRun {
    public static void main(String[] arguments) {
        try (Project project = Project.create()) {
            project.createFloor("Hall", MeshGeometry.createFlatPolygon(0, new Vec2d[] {
                    new Vec2d(0, 0), new Vec2d(20, 0), new Vec2d(20, 10), new Vec2d(0, 10)}));
            Portal west = project.createPortal("West", MeshGeometry.createVerticalRectangle(new Vec3d(0, 0, 4), new Vec3d(0, 2, 6)));
            Portal east = project.createPortal("East", MeshGeometry.createVerticalRectangle(new Vec3d(20, 0, 4), new Vec3d(20, 2, 6)));
            project.createJourney("Visitors").setPopulationSource(
                    new CountPopulationSource(new GlobalId[] {west.getId()}, new GlobalId[] {east.getId()}, 50));
            Simulation simulation = Simulation.create(project, "First run", "first-run.pfdb");
            while (!simulation.isDone()) simulation.step();
            simulation.stop();
            System.out.println("Everyone was through after " + simulation.getClock().getCurrentTimeString());
        }
    }
}

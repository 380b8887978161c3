import com.kelvar.pedflux.CountPopulationSource;
import com.kelvar.pedflux.Distribution;
import com.kelvar.pedflux.Evacuation;
import com.kelvar.pedflux.Floor;
import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.Journey;
import com.kelvar.pedflux.MeshGeometry;
import com.kelvar.pedflux.PopulationArrival;
import com.kelvar.pedflux.Portal;
import com.kelvar.pedflux.Profile;
import com.kelvar.pedflux.Project;
import com.kelvar.pedflux.Tri3d;
import com.kelvar.pedflux.Vec3d;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.locationtech.jts.geom.Coordinate;
import org.locationtech.jts.geom.Geometry;
import org.locationtech.jts.triangulate.polygon.ConstrainedDelaunayTriangulator;

/** A plan as a project: floors, barriers, stairs, portals, and the people. */
final class BuildingModel {
    /** In metres: taller than anyone. */
    private static final double OBSTACLE_HEIGHT = 2.5;

    private final Project project;
    private final Map<Plan.Level, GlobalId> floors = new HashMap<>();
    private final Map<Plan.Opening, GlobalId> portals = new HashMap<>();

    BuildingModel(Project project, Plan plan) {
        this.project = project;
        plan.levels().forEach(this::addLevel);
        plan.obstacles().forEach(this::addObstacle);
        plan.stairs().forEach(this::addStair);
        plan.openings().forEach(this::addOpening);
    }

    GlobalId floor(Plan.Level level) {
        return floors.get(level);
    }

    /** People who come in through the entrances during some seconds and walk to any exit. */
    void addJourney(Plan plan, int people, int arrivalSeconds) {
        GlobalId[] origins = ids(plan.openings(Plan.Use.ENTRANCE));
        if (origins.length == 0) throw new PlanException("A journey needs an entrance; the plan has none.");
        try (Journey journey = project.createJourney("Visitors");
                CountPopulationSource source =
                        new CountPopulationSource(origins, ids(plan.openings(Plan.Use.EXIT)), people);
                PopulationArrival arrival = PopulationArrival.createEvenlySpaced(arrivalSeconds)) {
            source.setPopulationArrival(arrival);
            journey.setPopulationSource(source);
            journey.setProfile(profile());
        }
    }

    /** People who stand spread over the levels, as many to the square metre on each, and leave by the nearest exit. */
    void addEvacuation(Plan plan, int people) {
        try (Evacuation evacuation = project.createEvacuation("Evacuation");
                CountPopulationSource source = new CountPopulationSource();
                Distribution reaction = Distribution.createUniform(0, 20)) {
            source.setPopulationCount(people);
            source.setOriginsWeighted(
                    plan.levels().stream().map(floors::get).toArray(GlobalId[]::new),
                    plan.levels().stream().mapToDouble(level -> level.area().getArea()).toArray());
            source.setDestinationsByLowestCost(ids(plan.openings(Plan.Use.EXIT)));
            evacuation.setPopulationSource(source);
            evacuation.setPreMovementWaitDistribution(reaction);
            evacuation.setProfile(profile());
        }
    }

    /** Commuters: free walking speeds after Weidmann, 1.34 ± 0.26 m/s. */
    private GlobalId profile() {
        try (Profile profile = project.createProfile("Commuters");
                Distribution speed = Distribution.createNormal(1.34, 0.26, 0.8, 1.9)) {
            profile.setSpeedDistribution(speed);
            return profile.getId();
        }
    }

    private GlobalId[] ids(List<Plan.Opening> openings) {
        return openings.stream().map(portals::get).toArray(GlobalId[]::new);
    }

    private void addLevel(Plan.Level level) {
        try (MeshGeometry mesh = MeshGeometry.create(triangles(level.area(), level.elevation()));
                Floor floor = project.createFloor(level.name(), mesh)) {
            floors.put(level, floor.getId());
        }
    }

    private void addObstacle(Plan.Obstacle obstacle) {
        double bottom = obstacle.level().elevation();
        double top = bottom + OBSTACLE_HEIGHT;
        List<Tri3d> faces = new ArrayList<>(List.of(triangles(obstacle.outline(), bottom)));
        faces.addAll(List.of(triangles(obstacle.outline(), top)));
        Coordinate[] ring = obstacle.outline().getExteriorRing().getCoordinates();
        for (int i = 0; i + 1 < ring.length; i++) {
            Vec3d below = vector(ring[i], bottom);
            Vec3d above = vector(ring[i + 1], top);
            faces.add(new Tri3d(below, vector(ring[i + 1], bottom), above));
            faces.add(new Tri3d(below, above, vector(ring[i], top)));
        }
        try (MeshGeometry mesh = MeshGeometry.create(faces.toArray(Tri3d[]::new))) {
            project.createBarrier(obstacle.name(), mesh).close();
        }
    }

    private void addStair(Plan.Stair stair) {
        double from = stair.from().elevation();
        double to = stair.to().elevation();
        Coordinate[] corners = stair.corners();
        Vec3d a = vector(corners[0], from);
        Vec3d b = vector(corners[1], from);
        Vec3d c = vector(corners[2], to);
        Vec3d d = vector(corners[3], to);
        try (MeshGeometry mesh = MeshGeometry.create(new Tri3d[] {upward(a, b, c), upward(a, c, d)})) {
            project.createStair(stair.name(), mesh).close();
        }
    }

    private void addOpening(Plan.Opening opening) {
        double elevation = opening.level().elevation();
        try (MeshGeometry mesh = MeshGeometry.createVerticalRectangle(
                        vector(opening.line().p0, elevation), vector(opening.line().p1, elevation + OBSTACLE_HEIGHT));
                Portal portal = project.createPortal(opening.name(), mesh)) {
            portals.put(opening, portal.getId());
        }
    }

    private static Tri3d[] triangles(Geometry area, double elevation) {
        Geometry triangles = ConstrainedDelaunayTriangulator.triangulate(area);
        Tri3d[] faces = new Tri3d[triangles.getNumGeometries()];
        for (int i = 0; i < faces.length; i++) {
            Coordinate[] corners = triangles.getGeometryN(i).getCoordinates();
            faces[i] = upward(
                    vector(corners[0], elevation), vector(corners[1], elevation), vector(corners[2], elevation));
        }
        return faces;
    }

    /** A plan's y goes up the sheet, the project's z down: seen from above both show the same picture. */
    private static Vec3d vector(Coordinate point, double elevation) {
        return new Vec3d(point.x, elevation, -point.y);
    }

    private static Tri3d upward(Vec3d a, Vec3d b, Vec3d c) {
        Tri3d triangle = new Tri3d(a, b, c);
        return triangle.getNormal().getY() > 0 ? triangle : new Tri3d(a, c, b);
    }
}

import java.util.List;
import org.locationtech.jts.geom.Coordinate;
import org.locationtech.jts.geom.Geometry;
import org.locationtech.jts.geom.LineSegment;
import org.locationtech.jts.geom.Polygon;

/** A building's plan in metres: x to the right and y up the sheet, elevations in metres. */
record Plan(List<Level> levels, List<Obstacle> obstacles, List<Stair> stairs, List<Opening> openings) {

    /** A storey: what can be walked at one elevation, polygons with holes. */
    record Level(String name, double elevation, Geometry area) {}

    /** Something that people walk around and that is taller than they are: a kiosk, a column. */
    record Obstacle(String name, Level level, Polygon outline) {}

    /** A flight with four corners: its first edge lies on the level it comes from, its third on the other. */
    record Stair(String name, Level from, Level to, Coordinate[] corners) {}

    enum Use {
        ENTRANCE,
        EXIT
    }

    /** A line across which people come in or leave. */
    record Opening(String name, Use use, Level level, LineSegment line) {}

    List<Opening> openings(Use use) {
        return openings.stream().filter(o -> o.use == use).toList();
    }
}

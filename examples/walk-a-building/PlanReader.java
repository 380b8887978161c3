import java.io.IOException;
import java.nio.charset.MalformedInputException;
import java.nio.file.Files;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.locationtech.jts.geom.Coordinate;
import org.locationtech.jts.geom.Geometry;
import org.locationtech.jts.geom.LineSegment;
import org.locationtech.jts.geom.LineString;
import org.locationtech.jts.geom.Polygon;
import org.locationtech.jts.io.ParseException;
import org.locationtech.jts.io.WKTReader;
import org.locationtech.jts.operation.union.UnaryUnionOp;
import org.locationtech.jts.operation.valid.IsValidOp;
import org.locationtech.jts.operation.valid.TopologyValidationError;

/**
 * Reads a plan file. It is a list of statements, each a keyword, a name and a well-known text:
 *
 * <pre>
 * # metres
 * level    "Concourse" at 0                         POLYGON ((...), (...))
 * obstacle "Kiosk" on "Concourse"                   POLYGON ((...))
 * stair    "West" from "Platform" to "Concourse"    POLYGON ((...))
 * entrance "Street" on "Concourse"                  LINESTRING (0 12, 0 18)
 * exit     "Trains" on "Platform"                   LINESTRING (4 3, 40 3)
 * </pre>
 *
 * A stair's polygon has four corners, the first edge on the level it comes from and the third on the other. A file
 * that holds nothing but one well-known text is a building of one level, "Ground".
 */
final class PlanReader {
    private static final Pattern STATEMENT = Pattern.compile(
            "\\s*(\\w+)\\s+\"([^\"]+)\"(?:\\s+at\\s+(\\S+))?(?:\\s+on\\s+\"([^\"]+)\")?"
                    + "(?:\\s+from\\s+\"([^\"]+)\"\\s+to\\s+\"([^\"]+)\")?\\s+([A-Za-z]+\\s*\\(.*)",
            Pattern.DOTALL);

    /** How far beside a level an opening may be drawn, in metres: half a wall. */
    private static final double TOLERANCE = 0.3;

    private final Map<String, Plan.Level> levels = new LinkedHashMap<>();
    private final List<Plan.Obstacle> obstacles = new ArrayList<>();
    private final List<Plan.Stair> stairs = new ArrayList<>();
    private final List<Plan.Opening> openings = new ArrayList<>();

    private PlanReader() {}

    /** The plan in a file, with further statements (openings given on the command line) after the file's own. */
    static Plan read(Path file, List<String> furtherStatements) {
        String text = content(file).replaceAll("(?m)#.*$", "");
        PlanReader reader = new PlanReader();
        if (text.strip().matches("(?is)(POLYGON|MULTIPOLYGON|GEOMETRYCOLLECTION)\\s*\\(.*")) {
            reader.addLevel("Ground", 0, text);
        } else {
            statements(text).forEach(reader::addStatement);
        }
        furtherStatements.forEach(reader::addStatement);
        return reader.plan();
    }

    private static String content(Path file) {
        try {
            return Files.readString(file);
        } catch (NoSuchFileException e) {
            throw new PlanException("There is no plan file \"%s\".", file);
        } catch (MalformedInputException e) {
            throw new PlanException("The plan file \"%s\" is not a text in UTF-8.", file);
        } catch (IOException e) {
            throw new PlanException("The plan file \"%s\" cannot be read: %s.", file, e.getMessage());
        }
    }

    /** A statement ends where the parentheses of its well-known text close. */
    private static List<String> statements(String text) {
        List<String> statements = new ArrayList<>();
        int start = 0;
        int depth = 0;
        for (int i = 0; i < text.length(); i++) {
            char character = text.charAt(i);
            if (character == '(') depth++;
            if (character == ')' && --depth == 0) {
                statements.add(text.substring(start, i + 1));
                start = i + 1;
            }
        }
        String rest = text.substring(start).strip();
        if (!rest.isEmpty()) throw new PlanException("The plan ends in the middle of \"%s\".", beginning(rest));
        return statements;
    }

    private void addStatement(String statement) {
        Matcher matcher = STATEMENT.matcher(statement);
        if (!matcher.matches()) {
            throw new PlanException(
                    "\"%s\" is not a statement such as: exit \"North\" on \"Ground\" LINESTRING (0 0, 2 0).",
                    beginning(statement));
        }
        String keyword = matcher.group(1);
        String name = matcher.group(2);
        String what = Character.toUpperCase(keyword.charAt(0)) + keyword.substring(1) + " \"" + name + "\"";
        String text = matcher.group(7);
        switch (keyword) {
            case "level" -> addLevel(name, elevation(what, matcher.group(3)), text);
            case "obstacle" -> obstacles.add(
                    new Plan.Obstacle(name, level(what, matcher.group(4)), geometry(what, text, Polygon.class)));
            case "stair" -> addStair(name, what, matcher.group(5), matcher.group(6), text);
            case "entrance" -> addOpening(name, what, Plan.Use.ENTRANCE, matcher.group(4), text);
            case "exit" -> addOpening(name, what, Plan.Use.EXIT, matcher.group(4), text);
            default -> throw new PlanException(
                    "\"%s\" is none of level, obstacle, stair, entrance and exit.", keyword);
        }
    }

    private void addLevel(String name, double elevation, String text) {
        String what = "Level \"" + name + "\"";
        Geometry area = UnaryUnionOp.union(geometry(what, text, Geometry.class));
        if (area.getDimension() != 2) throw new PlanException("%s must be made of polygons.", what);
        if (levels.put(name, new Plan.Level(name, elevation, area)) != null) {
            throw new PlanException("%s is there twice.", what);
        }
    }

    private void addStair(String name, String what, String from, String to, String text) {
        Plan.Level lower = level(what, from);
        Plan.Level upper = level(what, to);
        Polygon polygon = geometry(what, text, Polygon.class);
        if (polygon.getNumPoints() != 5 || polygon.getNumInteriorRing() != 0) {
            throw new PlanException("%s must have four corners.", what);
        }
        if (lower.elevation() == upper.elevation()) {
            throw new PlanException("%s joins two levels of the same elevation.", what);
        }
        stairs.add(new Plan.Stair(name, lower, upper, polygon.getExteriorRing().getCoordinates()));
    }

    private void addOpening(String name, String what, Plan.Use use, String levelName, String text) {
        Plan.Level level = level(what, levelName);
        LineString line = geometry(what, text, LineString.class);
        if (line.getNumPoints() != 2 || line.getLength() == 0) {
            throw new PlanException("%s must be a line between two different points.", what);
        }
        if (!level.area().buffer(TOLERANCE).covers(line)) {
            throw new PlanException("%s lies outside level \"%s\".", what, level.name());
        }
        openings.add(new Plan.Opening(
                name, use, level, new LineSegment(line.getCoordinateN(0), line.getCoordinateN(1))));
    }

    /** A valid geometry of a kind; a plan with a gap leaks people, so every ring must be closed and simple. */
    private static <T extends Geometry> T geometry(String what, String text, Class<T> kind) {
        Geometry geometry;
        try {
            geometry = new WKTReader().read(text);
        } catch (ParseException e) {
            throw new PlanException("%s is not a well-known text: %s.", what, e.getMessage());
        } catch (IllegalArgumentException e) {
            throw new PlanException("%s has an open ring: its last point must be its first.", what);
        }
        if (!kind.isInstance(geometry)) {
            throw new PlanException(
                    "%s must be a %s, not a %s.", what, kind.getSimpleName(), geometry.getGeometryType());
        }
        TopologyValidationError error = new IsValidOp(geometry).getValidationError();
        if (error != null) {
            Coordinate place = error.getCoordinate();
            throw new PlanException(
                    "%s is not a proper shape: %s at (%s %s).", what, error.getMessage().toLowerCase(), place.x, place.y);
        }
        return kind.cast(geometry);
    }

    private static double elevation(String what, String text) {
        try {
            return Double.parseDouble(text == null ? "" : text);
        } catch (NumberFormatException e) {
            throw new PlanException("%s needs its elevation in metres, such as: at 4.5.", what);
        }
    }

    private Plan.Level level(String what, String name) {
        if (name == null && levels.size() == 1) return levels.values().iterator().next();
        Plan.Level level = levels.get(name);
        if (level == null) throw new PlanException("%s must name one of the levels %s.", what, levels.keySet());
        return level;
    }

    private Plan plan() {
        if (levels.isEmpty()) throw new PlanException("The plan has no level.");
        Plan plan = new Plan(
                List.copyOf(levels.values()), List.copyOf(obstacles), List.copyOf(stairs), List.copyOf(openings));
        if (plan.openings(Plan.Use.EXIT).isEmpty()) {
            throw new PlanException("The plan has no exit; give one in the file or with --exit.");
        }
        return plan;
    }

    private static String beginning(String text) {
        String line = text.strip().replaceAll("\\s+", " ");
        return line.length() > 40 ? line.substring(0, 40) + "…" : line;
    }
}

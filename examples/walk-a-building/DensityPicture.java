import com.kelvar.pedflux.PixelValue;
import com.kelvar.pedflux.ValueMap2d;
import com.kelvar.pedflux.Vec3d;
import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.Line2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.io.IOException;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import javax.imageio.ImageIO;
import org.locationtech.jts.awt.ShapeWriter;
import org.locationtech.jts.geom.Coordinate;
import org.locationtech.jts.geom.Geometry;
import org.locationtech.jts.geom.LineSegment;

/** The average density over the plan: a panel per level, walls, stairs, openings, a scale and a legend. */
final class DensityPicture {
    /** From empty to the densest, even steps of lightness so that it also reads in grey. */
    private static final Color[] RAMP = {
        new Color(0xd6e6f4), new Color(0x9ecae1), new Color(0x57a0ce), new Color(0xfee391), new Color(0xfe9929),
        new Color(0xd94801), new Color(0x8c2d04)
    };
    /** Where people hardly ever walked, in persons per square metre: left blank. */
    private static final double BLANK = 0.005;

    private static final int MARGIN = 60;
    private static final int LEGEND = 90;

    private final Plan plan;
    private final double scale;
    private final double densest;
    private final List<Rectangle2D> bounds;
    private final double left;
    private final BufferedImage image;
    private final Graphics2D graphics;

    private DensityPicture(Plan plan, double densest) {
        this.plan = plan;
        this.densest = nextNice(densest);
        bounds = plan.levels().stream().map(level -> bounds(plan, level)).toList();
        left = bounds.stream().mapToDouble(Rectangle2D::getMinX).min().orElse(0);
        double width = bounds.stream().mapToDouble(Rectangle2D::getMaxX).max().orElse(1) - left;
        double height = bounds.stream().mapToDouble(Rectangle2D::getHeight).sum();
        scale = Math.min(30, Math.min(1500 / width, 2400 / height));
        image = new BufferedImage(
                (int) Math.ceil(width * scale) + 2 * MARGIN,
                (int) Math.ceil(height * scale) + (bounds.size() + 1) * MARGIN + LEGEND,
                BufferedImage.TYPE_INT_RGB);
        graphics = image.createGraphics();
        graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
        graphics.setColor(Color.WHITE);
        graphics.fillRect(0, 0, image.getWidth(), image.getHeight());
        graphics.setFont(new Font(Font.SANS_SERIF, Font.PLAIN, 14));
    }

    static void write(Plan plan, Map<Plan.Level, ValueMap2d> maps, Path file) throws IOException {
        Map<Plan.Level, PixelValue[]> pixels = new HashMap<>();
        maps.forEach((level, map) -> pixels.put(level, map.getPixelValues()));
        double densest = pixels.values().stream()
                .flatMap(Arrays::stream)
                .mapToDouble(PixelValue::getValue)
                .max()
                .orElse(0);
        DensityPicture picture = new DensityPicture(plan, densest);
        double top = MARGIN;
        for (int i = 0; i < plan.levels().size(); i++) {
            Plan.Level level = plan.levels().get(i);
            picture.drawLevel(level, picture.bounds.get(i), top, maps.get(level), pixels.get(level));
            top += picture.bounds.get(i).getHeight() * picture.scale + MARGIN;
        }
        picture.drawLegend();
        ImageIO.write(picture.image, "png", file.toFile());
    }

    private static Rectangle2D bounds(Plan plan, Plan.Level level) {
        Path2D all = new Path2D.Double(shape(level.area()));
        for (Plan.Stair stair : plan.stairs()) {
            if (stair.from() == level || stair.to() == level) all.append(path(stair.corners()), false);
        }
        return all.getBounds2D();
    }

    private void drawLevel(Plan.Level level, Rectangle2D room, double top, ValueMap2d map, PixelValue[] pixels) {
        var sheet = graphics.getTransform();
        graphics.setColor(Color.DARK_GRAY);
        graphics.drawString("Average density: " + level.name(), MARGIN, (float) top - 28);
        // From here on in metres, y up the sheet.
        graphics.translate(MARGIN, top);
        graphics.scale(scale, -scale);
        graphics.translate(-left, -room.getMaxY());

        graphics.setColor(new Color(0xf4f4f4));
        graphics.fill(shape(level.area()));
        if (map != null) drawPixels(map, pixels);
        drawStairs(level);
        graphics.setStroke(new BasicStroke((float) (1.5 / scale)));
        for (Plan.Obstacle obstacle : plan.obstacles()) {
            if (obstacle.level() != level) continue;
            graphics.setColor(new Color(0xc4cad0));
            graphics.fill(shape(obstacle.outline()));
        }
        graphics.setColor(Color.DARK_GRAY);
        graphics.draw(shape(level.area()));
        plan.openings().stream().filter(o -> o.level() == level).forEach(this::drawOpening);
        graphics.setTransform(sheet);
    }

    private void drawPixels(ValueMap2d map, PixelValue[] pixels) {
        // Smoothed edges would show the raster as a grid.
        graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_OFF);
        double size = map.getPixelSize();
        for (PixelValue pixel : pixels) {
            if (pixel.getValue() >= BLANK) {
                try (Vec3d center = map.getCenterOfPixel(pixel.getX(), pixel.getY())) {
                    graphics.setColor(color(pixel.getValue() / densest));
                    graphics.fill(new Rectangle2D.Double(
                            center.getX() - size / 2, -center.getZ() - size / 2, size, size));
                }
            }
            pixel.close();
        }
        graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    }

    /** A stair is drawn on both of its levels, as treads. */
    private void drawStairs(Plan.Level level) {
        graphics.setStroke(new BasicStroke((float) (1 / scale)));
        for (Plan.Stair stair : plan.stairs()) {
            if (stair.from() != level && stair.to() != level) continue;
            Coordinate[] c = stair.corners();
            graphics.setColor(new Color(0x9aa3ad));
            int treads = (int) Math.max(2, c[1].distance(c[2]) / 0.3);
            for (int tread = 0; tread <= treads; tread++) {
                double t = (double) tread / treads;
                graphics.draw(new Line2D.Double(
                        c[0].x + t * (c[3].x - c[0].x),
                        c[0].y + t * (c[3].y - c[0].y),
                        c[1].x + t * (c[2].x - c[1].x),
                        c[1].y + t * (c[2].y - c[1].y)));
            }
            graphics.draw(path(c));
        }
    }

    private void drawOpening(Plan.Opening opening) {
        Color color = opening.use() == Plan.Use.EXIT ? new Color(0x1a7f37) : new Color(0x7a1fa2);
        graphics.setColor(color);
        graphics.setStroke(new BasicStroke((float) (5 / scale), BasicStroke.CAP_BUTT, BasicStroke.JOIN_MITER));
        LineSegment line = opening.line();
        graphics.draw(new Line2D.Double(line.p0.x, line.p0.y, line.p1.x, line.p1.y));
        var metres = graphics.getTransform();
        graphics.translate(line.midPoint().x, line.midPoint().y);
        graphics.scale(1 / scale, -1 / scale);
        int width = graphics.getFontMetrics().stringWidth(opening.name());
        double x = graphics.getTransform().getTranslateX();
        double start = Math.min(Math.max(x - width / 2.0, 4), image.getWidth() - width - 4.0) - x;
        graphics.setColor(new Color(255, 255, 255, 200));
        graphics.fill(new Rectangle2D.Double(start - 2, -22, width + 4.0, 17));
        graphics.setColor(color);
        graphics.drawString(opening.name(), (float) start, -9);
        graphics.setTransform(metres);
    }

    private void drawLegend() {
        int y = image.getHeight() - LEGEND + 10;
        int width = 360;
        for (int x = 0; x < width; x++) {
            graphics.setColor(color((double) x / width));
            graphics.fillRect(MARGIN + x, y, 1, 16);
        }
        graphics.setColor(Color.DARK_GRAY);
        for (int quarter = 0; quarter <= 4; quarter++) {
            String label = String.format(Locale.ROOT, "%.2f", densest * quarter / 4);
            graphics.drawString(label, MARGIN + width * quarter / 4 - 12, y + 34);
        }
        graphics.drawString("persons/m², over the whole run", MARGIN, y + 56);
        double metres = nextNice(image.getWidth() / 10.0 / scale);
        int right = image.getWidth() - MARGIN;
        graphics.setStroke(new BasicStroke(2));
        graphics.drawLine((int) (right - metres * scale), y + 44, right, y + 44);
        graphics.drawString(String.format(Locale.ROOT, "%.0f m", metres), (int) (right - metres * scale), y + 36);
    }

    /** The next of 1, 2, 5, 10, … times a power of ten. */
    private static double nextNice(double value) {
        double power = Math.pow(10, Math.floor(Math.log10(Math.max(value, 0.01))));
        double leading = value / power;
        return power * (leading <= 1 ? 1 : leading <= 2 ? 2 : leading <= 5 ? 5 : 10);
    }

    private static Color color(double share) {
        double place = Math.min(Math.max(share, 0), 1) * (RAMP.length - 1);
        int step = Math.min((int) place, RAMP.length - 2);
        Color low = RAMP[step];
        Color high = RAMP[step + 1];
        double part = place - step;
        return new Color(
                mix(low.getRed(), high.getRed(), part),
                mix(low.getGreen(), high.getGreen(), part),
                mix(low.getBlue(), high.getBlue(), part));
    }

    private static int mix(int low, int high, double part) {
        return (int) Math.round(low + part * (high - low));
    }

    private static Shape shape(Geometry geometry) {
        return new ShapeWriter().toShape(geometry);
    }

    private static Path2D path(Coordinate[] corners) {
        Path2D path = new Path2D.Double();
        path.moveTo(corners[0].x, corners[0].y);
        for (Coordinate corner : corners) path.lineTo(corner.x, corner.y);
        path.closePath();
        return path;
    }
}

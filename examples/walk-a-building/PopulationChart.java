import com.kelvar.pedflux.Graph;
import com.kelvar.pedflux.Series;
import com.kelvar.pedflux.Vec2d;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/** How many people are on each level over time, as an SVG that a browser or a report shows. */
final class PopulationChart {
    private static final int WIDTH = 900;
    private static final int HEIGHT = 420;
    private static final int LEFT = 60;
    private static final int RIGHT = 160;
    private static final int TOP = 40;
    private static final int BOTTOM = 50;
    private static final String[] COLORS = {"#4575b4", "#d73027", "#1a7f37", "#7a1fa2", "#f98e3b", "#5f6b76"};

    private PopulationChart() {}

    private record Curve(String name, List<double[]> points) {}

    static void write(Graph graph, Path file) throws IOException {
        List<Curve> curves = new ArrayList<>();
        double lastTime = 1;
        double most = 1;
        for (Series series : graph.getSeries()) {
            List<double[]> points = new ArrayList<>();
            for (Vec2d value : series.getValues()) {
                points.add(new double[] {value.getX(), value.getZ()});
                lastTime = Math.max(lastTime, value.getX());
                most = Math.max(most, value.getZ());
                value.close();
            }
            curves.add(new Curve(series.getName(), points));
            series.close();
        }
        double timeStep = step(lastTime);
        double countStep = step(most);
        double countTop = Math.ceil(most / countStep) * countStep;

        StringBuilder svg = new StringBuilder();
        append(svg, "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" font-family=\"sans-serif\" font-size=\"13\">", WIDTH, HEIGHT);
        append(svg, "<rect width=\"%d\" height=\"%d\" fill=\"white\"/>", WIDTH, HEIGHT);
        append(svg, "<text x=\"%d\" y=\"22\" font-size=\"16\">%s</text>", LEFT, escape(graph.getTitle()));
        for (double count = 0; count <= countTop; count += countStep) {
            double y = y(count, countTop);
            append(svg, "<path d=\"M%d %.1fH%d\" stroke=\"#ddd\"/>", LEFT, y, WIDTH - RIGHT);
            append(svg, "<text x=\"%d\" y=\"%.1f\" text-anchor=\"end\">%.0f</text>", LEFT - 8, y + 4, count);
        }
        for (double time = 0; time <= lastTime; time += timeStep) {
            append(svg, "<text x=\"%.1f\" y=\"%d\" text-anchor=\"middle\">%.0f</text>", x(time, lastTime), HEIGHT - BOTTOM + 20, time);
        }
        append(svg, "<text x=\"%d\" y=\"%d\">%s</text>", LEFT, HEIGHT - 10, escape(graph.getXLabel()));
        for (int i = 0; i < curves.size(); i++) {
            String color = COLORS[i % COLORS.length];
            append(svg, "<polyline fill=\"none\" stroke=\"%s\" stroke-width=\"2\" points=\"", color);
            for (double[] point : curves.get(i).points()) append(svg, "%.1f,%.1f ", x(point[0], lastTime), y(point[1], countTop));
            append(svg, "\"/><text x=\"%d\" y=\"%d\" fill=\"%s\">%s</text>", WIDTH - RIGHT + 12, TOP + 14 + 20 * i, color, escape(curves.get(i).name()));
        }
        svg.append("</svg>\n");
        Files.writeString(file, svg);
    }

    private static double x(double time, double lastTime) {
        return LEFT + time / lastTime * (WIDTH - LEFT - RIGHT);
    }

    private static double y(double count, double top) {
        return HEIGHT - BOTTOM - count / top * (HEIGHT - TOP - BOTTOM);
    }

    /** A round step that divides a range into four to ten. */
    private static double step(double range) {
        double power = Math.pow(10, Math.floor(Math.log10(range)));
        return range >= 5 * power ? power : range >= 2 * power ? power / 2 : power / 5;
    }

    private static void append(StringBuilder svg, String format, Object... arguments) {
        svg.append(String.format(Locale.ROOT, format, arguments));
    }

    private static String escape(String text) {
        return text.replace("&", "&amp;").replace("<", "&lt;");
    }
}

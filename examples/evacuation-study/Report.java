import com.kelvar.pedflux.*;
import java.awt.image.BufferedImage;
import java.io.IOException;
import java.nio.file.Path;
import java.util.Locale;
import javax.imageio.ImageIO;

/** What one run shows: how fast each floor empties, how dense it gets, and how long people are in a crush. */
final class Report {
    private Report() {}

    static void of(Project project, GlobalId run, Library library, Path output) throws IOException {
        clearTimes(project, run, library);
        densities(project, run, library, output);
        population(project, run, library, output);
        journeys(project, run, output);
        levelsOfService(project, run);
    }

    private static void clearTimes(Project project, GlobalId run, Library library) {
        TimeUntilClearMapQuery query = project.createTimeUntilClearMapQuery("Time until clear", run);
        query.setMapDisplayObjects(new GlobalId[] {library.readingRoom, library.stair, library.hall});
        for (Map map : query.evaluate()) {
            System.out.printf(Locale.ROOT, "  %-12s clear after %.0f s%n",
                    project.getObject(map.getSurfaceId()).getName(), greatest(map.asMap2d().asValueMap2d()));
        }
    }

    private static double greatest(ValueMap2d map) {
        double greatest = 0;
        for (PixelValue pixel : map.getPixelValues()) greatest = Math.max(greatest, pixel.getValue());
        return greatest;
    }

    private static void densities(Project project, GlobalId run, Library library, Path output) throws IOException {
        MaxDensityMapQuery query = project.createMaxDensityMapQuery("Greatest density", run);
        query.setMapDisplayObjects(new GlobalId[] {library.readingRoom, library.hall});
        query.setLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId.FRUIN_WALKWAY, ColorTransition.STEPS);
        for (Map map : query.evaluate()) {
            String floor = project.getObject(map.getSurfaceId()).getName();
            System.out.printf(Locale.ROOT, "  %-12s at most %.1f persons/m²%n",
                    floor, greatest(map.asMap2d().asValueMap2d()));
            Path file = output.resolve(floor.toLowerCase(Locale.ROOT).replace(' ', '-') + ".png");
            ImageIO.write(picture(map.asMap2d().asColorMap2d()), "png", file.toFile());
        }
    }

    private static BufferedImage picture(ColorMap2d map) {
        BufferedImage image =
                new BufferedImage(map.getXPixelCount(), map.getYPixelCount(), BufferedImage.TYPE_INT_ARGB);
        for (PixelColor pixel : map.getPixelColors()) {
            Color color = pixel.getColor();
            image.setRGB(pixel.getX(), pixel.getY(), new java.awt.Color((float) color.getRed(),
                    (float) color.getGreen(), (float) color.getBlue(), (float) color.getAlpha()).getRGB());
        }
        return image;
    }

    private static void population(Project project, GlobalId run, Library library, Path output) {
        PopulationCountGraphQuery query = project.createPopulationCountGraphQuery("Population", run);
        query.setAreaIds(new GlobalId[] {library.readingRoom, library.hall});
        Graph graph = query.evaluate();
        graph.exportCsv(output.resolve("population.csv").toString());
        for (Series series : graph.getSeries()) {
            for (Vec2d point : series.getValues()) {
                if (point.getX() == 60) {
                    System.out.printf(Locale.ROOT, "  %-12s %.0f people after a minute%n", series.getName(), point.getZ());
                }
            }
        }
    }

    private static void journeys(Project project, GlobalId run, Path output) {
        Table table = project.createAgentSummaryTableQuery("People", run).evaluate();
        table.exportCsv(output.resolve("people.csv").toString());
    }

    private static void levelsOfService(Project project, GlobalId run) {
        Table table = project.createAgentLevelOfServiceTimeTableQuery("Levels of service", run).evaluate();
        System.out.print("  seconds per person at levels A to F:");
        for (int level = 0; level < table.getColumnCount(); level++) {
            double sum = 0;
            for (int person = 0; person < table.getRowCount(); person++) sum += table.getDoubleValue(person, level);
            System.out.printf(Locale.ROOT, " %.1f", sum / table.getRowCount());
        }
        System.out.println();
    }
}

import com.kelvar.pedflux.Database;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Locale;

/** What a planner asks first: how long did it take, for all, on average and for the slowest, and how dense did it get. */
record Summary(int people, double lastExit, double meanTravelTime, double travelTime95, double maximumDensity) {

    /** Times in seconds from the run's database; the density in persons per square metre. */
    static Summary of(Database database, double maximumDensity) {
        double frameLength = database.getFrameLength();
        int[] agents = database.getAllAgents();
        double[] travelTimes = new double[agents.length];
        int lastFrame = database.getFirstFrame();
        for (int i = 0; i < agents.length; i++) {
            int last = database.getAgentLastFrame(agents[i]);
            travelTimes[i] = (last - database.getAgentFirstFrame(agents[i])) * frameLength;
            lastFrame = Math.max(lastFrame, last);
        }
        Arrays.sort(travelTimes);
        return new Summary(
                agents.length,
                (lastFrame - database.getFirstFrame()) * frameLength,
                Arrays.stream(travelTimes).average().orElse(0),
                agents.length == 0 ? 0 : travelTimes[(int) Math.ceil(0.95 * agents.length) - 1],
                maximumDensity);
    }

    String table() {
        return String.format(
                Locale.ROOT,
                """
                people                     %8d
                last one out               %8.1f s
                mean travel time           %8.1f s
                95th percentile            %8.1f s
                maximum density            %8.2f persons/m²
                """,
                people,
                lastExit,
                meanTravelTime,
                travelTime95,
                maximumDensity);
    }

    void write(Path file) throws IOException {
        Files.writeString(
                file,
                String.format(
                        Locale.ROOT,
                        "people,last_exit_s,mean_travel_time_s,travel_time_95_s,maximum_density_per_m2%n%d,%.1f,%.1f,%.1f,%.2f%n",
                        people,
                        lastExit,
                        meanTravelTime,
                        travelTime95,
                        maximumDensity));
    }
}

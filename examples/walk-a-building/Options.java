import java.nio.file.Path;
import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;

/** The command line. Coordinates in metres, in the plan's own system. */
record Options(
        Path plan, boolean evacuation, int people, int minutes, int arrivalSeconds, int seed, Path output, List<String> openings) {

    static final String USAGE =
            """
            usage: walk-a-building PLAN [options]
              --evacuate            people stand on all levels and leave; otherwise they come in and walk through
              --people N            how many (1500)
              --minutes N           at most this long (30)
              --arrival SECONDS     how long people keep coming in (240)
              --seed N              another seed is another day (1)
              --output DIRECTORY    where the results go (output)
              --exit NAME=X,Y,X,Y   an exit on the only level, from one point to another; may be repeated
              --entrance NAME=X,Y,X,Y
            """;

    static Options parse(String[] arguments) {
        Path plan = null;
        boolean evacuation = false;
        int people = 1500;
        int minutes = 30;
        int arrival = 240;
        int seed = 1;
        Path output = Path.of("output");
        List<String> openings = new ArrayList<>();
        Deque<String> rest = new ArrayDeque<>(List.of(arguments));
        while (!rest.isEmpty()) {
            String argument = rest.pop();
            switch (argument) {
                case "--evacuate" -> evacuation = true;
                case "--people" -> people = number(argument, rest, 1, 100_000);
                case "--minutes" -> minutes = number(argument, rest, 1, 24 * 60);
                case "--arrival" -> arrival = number(argument, rest, 1, 24 * 3600);
                case "--seed" -> seed = number(argument, rest, 0, Integer.MAX_VALUE);
                case "--output" -> output = Path.of(value(argument, rest));
                case "--exit", "--entrance" -> openings.add(opening(argument, value(argument, rest)));
                default -> {
                    if (argument.startsWith("-") || plan != null) {
                        throw new PlanException("\"%s\" is no option.%n%s", argument, USAGE);
                    }
                    plan = Path.of(argument);
                }
            }
        }
        if (plan == null) throw new PlanException("No plan was given.%n%s", USAGE);
        return new Options(plan, evacuation, people, minutes, arrival, seed, output, openings);
    }

    private static String value(String option, Deque<String> rest) {
        if (rest.isEmpty()) throw new PlanException("%s needs a value.%n%s", option, USAGE);
        return rest.pop();
    }

    private static int number(String option, Deque<String> rest, int least, int most) {
        String value = value(option, rest);
        try {
            int number = Integer.parseInt(value);
            if (number >= least && number <= most) return number;
        } catch (NumberFormatException e) {
            // told below, together with numbers out of range
        }
        throw new PlanException("%s must be a whole number from %d to %d, not \"%s\".", option, least, most, value);
    }

    private static String opening(String option, String value) {
        String[] parts = value.split("=", 2);
        String[] numbers = parts.length == 2 ? parts[1].split(",") : new String[0];
        if (numbers.length != 4) {
            throw new PlanException("%s must look like North=0,4,0,6, not \"%s\".", option, value);
        }
        return String.format(
                "%s \"%s\" LINESTRING (%s %s, %s %s)",
                option.substring(2), parts[0], numbers[0], numbers[1], numbers[2], numbers[3]);
    }
}

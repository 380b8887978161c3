package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.lang.reflect.Method;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.TreeMap;
import java.util.TreeSet;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Every property of every class: what was set is read again, and is in the file. */
class RoundTripTest {
    /** A setter and the getter of its name. */
    private record Property(Method setter, Method getter) {
        String read(NativeObject object) {
            try {
                return Description.text(Description.read(getter, object), getter.getReturnType());
            } catch (IllegalAccessException hidden) {
                throw new AssertionError(hidden);
            }
        }

        String name() {
            return setter.getDeclaringClass().getSimpleName() + "." + setter.getName().substring(3);
        }
    }

    /** Values and live objects have their own tests; what a simulation or a result gives cannot be made. */
    private static final Set<String> NOT_CONFIGURATION = Set.of("Agent", "AgentData", "AgentRequest", "Database",
            "Exception", "Issue", "MeshGeometry", "PolylineGeometry", "Project", "RectangleGeometry", "Selection",
            "Simulation", "View");

    private static Samples samples;
    private static final List<NativeObject> MADE = new ArrayList<>();

    @BeforeAll
    static void makeOneOfEach() throws ReflectiveOperationException, IOException {
        List<Class<?>> classes = new ArrayList<>();
        TreeSet<String> names = new TreeSet<>();
        List<String> lines = Files.readAllLines(Path.of(System.getProperty("pedflux.test.surface")));
        for (String line : lines) {
            if (line.startsWith("delete_")) names.add(line.substring(7, line.indexOf('\t')));
        }
        names.removeAll(NOT_CONFIGURATION);
        for (String name : names) classes.add(Class.forName("com.kelvar.pedflux." + name));
        samples = new Samples(classes);
        for (SimObject[] pair : samples.objects.values()) MADE.add(pair[0]);
        for (Class<?> one : classes) {
            if (SimObject.class.isAssignableFrom(one)) continue;
            NativeObject made = samples.made(one);
            if (made != null) MADE.add(made);
        }
    }

    private static List<Property> properties(Class<?> type) throws ReflectiveOperationException {
        Map<String, Property> found = new TreeMap<>();
        for (Method setter : type.getMethods()) {
            if (!setter.getName().matches("set[A-Z].*") || setter.getParameterCount() != 1) continue;
            for (String word : new String[] {"get", "is"}) {
                try {
                    Method getter = type.getMethod(word + setter.getName().substring(3));
                    boolean fits = getter.getReturnType().isAssignableFrom(setter.getParameterTypes()[0]);
                    if (fits) found.put(setter.toString(), new Property(setter, getter));
                } catch (NoSuchMethodException none) {
                    // A setter without a getter is one of the uneven ones.
                }
            }
        }
        return new ArrayList<>(found.values());
    }

    @Test
    void everyKindCanBeMade() {
        assertEquals(Map.of(), samples.notMade);
    }

    @Test
    void everyKindIsFoundByNameByIdentifierAndInItsList() throws ReflectiveOperationException {
        int lists = 0;
        for (var entry : samples.objects.entrySet()) {
            SimObject[] pair = entry.getValue();
            Class<?> type = pair[0].getClass();
            for (SimObject object : pair) {
                Method byName = Project.class.getMethod("get" + entry.getKey(), String.class);
                Method byIdentifier = Project.class.getMethod("get" + entry.getKey(), GlobalId.class);
                assertEquals(object.getId(), ((SimObject) byName.invoke(samples.project, object.getName())).getId());
                assertEquals(object.getName(), ((SimObject) byIdentifier.invoke(samples.project, object.getId())).getName());
                assertEquals(null, byName.invoke(samples.project, "no " + object.getName()));
                assertEquals(null, byIdentifier.invoke(samples.project, GlobalId.generate()));
            }
            for (Method list : Project.class.getMethods()) {
                if (list.getParameterCount() > 0 || !type.arrayType().equals(list.getReturnType())) continue;
                ++lists;
                List<GlobalId> listed = new ArrayList<>();
                for (SimObject object : (SimObject[]) list.invoke(samples.project)) listed.add(object.getId());
                int first = listed.indexOf(pair[0].getId());
                assertTrue(first >= 0 && first < listed.indexOf(pair[1].getId()), list + ": " + listed);
            }
        }
        assertEquals(samples.objects.size(), lists, "a list for each kind");
    }

    @Test
    void whatWasSetIsReadAgainAlsoAfterEverythingElseWasSet() throws ReflectiveOperationException {
        List<String> wrong = new ArrayList<>();
        int tried = 0;
        for (NativeObject object : MADE) {
            Map<Property, String> expected = new LinkedHashMap<>();
            for (Property property : properties(object.getClass())) {
                if (UNEVEN.contains(property.name())) continue;
                Samples.Offer offer = samples.offer(property.setter, object);
                if (offer.result() == null) {
                    wrong.add(property.name() + " takes nothing: " + offer.refusal());
                    continue;
                }
                ++tried;
                String value = Description.text(offer.arguments()[0], property.getter.getReturnType());
                String read = property.read(object);
                if (!same(value, read)) wrong.add(property.name() + ": set " + value + " but read " + read);
                // What was set before and is excluded by this one is not looked at again.
                expected.entrySet().removeIf(entry -> changes(property, entry.getKey()));
                expected.put(property, value);
            }
            for (var entry : expected.entrySet()) {
                String read = entry.getKey().read(object);
                if (!same(entry.getValue(), read)) {
                    wrong.add(entry.getKey().name() + ": set " + entry.getValue() + " but read in the end " + read);
                }
            }
        }
        assertEquals("", String.join("\n", wrong), wrong.size() + " of " + tried);
        assertTrue(tried > 300, "only " + tried);
    }

    /** A rate that is set as its inverse loses the last digit. */
    private static boolean same(String expected, String read) {
        if (expected.equals(read)) return true;
        try {
            return Math.abs(Double.parseDouble(expected) / Double.parseDouble(read) - 1) < 1e-12;
        } catch (NumberFormatException notNumbers) {
            return false;
        }
    }

    /** Setters of two names for one thing, and those that replace what the other one set. */
    private static final Set<Set<String>> EXCLUSIVE = Set.of(
            Set.of("ExponentialDistribution.Rate", "ExponentialDistribution.Scale"),
            Set.of("ServerSummaryTableQuery.SimulationRunIds", "ServerSummaryTableQuery.SimulationRunId"),
            Set.of("TallyGraphQuery.SimulationRunIds", "TallyGraphQuery.SimulationRunId"),
            Set.of("VolumeDensityGraphQuery.SimulationRunIds", "VolumeDensityGraphQuery.SimulationRunId"),
            Set.of("TallyChange.ValueAsDistribution", "TallyChange.ValueAsTally"));

    /** Lists whose length depends on other properties; tests of their own try them. */
    private static final Set<String> UNEVEN = Set.of("ODMatrixPopulationSource.PopulationData");

    private static boolean changes(Property setter, Property other) {
        return EXCLUSIVE.contains(Set.of(setter.name(), other.name()));
    }

    @Test
    void whatIsGivenIsACopy() throws ReflectiveOperationException {
        List<String> wrong = new ArrayList<>();
        for (NativeObject object : MADE) {
            if (!(object instanceof SimObject)) continue;
            for (Property property : properties(object.getClass())) {
                Class<?> type = property.getter.getReturnType();
                if (!NativeObject.class.isAssignableFrom(type) || SimObject.class.isAssignableFrom(type)) continue;
                String before = property.read(object);
                Object given = Description.read(property.getter, object);
                if (given == null || Geometry.class.isAssignableFrom(type)) continue;
                for (Property inner : properties(given.getClass())) samples.offer(inner.setter, given);
                String after = property.read(object);
                if (!before.equals(after)) wrong.add(property.name());
            }
        }
        assertEquals(List.of(), wrong);
    }

    @Test
    void aProjectWithOneOfEverythingIsEqualAfterSavingAndOpening(@TempDir Path directory) {
        String path = directory.resolve("everything.json").toString();
        samples.project.save(path);
        Map<String, Map<String, String>> saved = new TreeMap<>();
        for (SimObject object : samples.project.getObjects()) saved.put(object.getName(), Description.of(whole(object)));
        try (Project opened = Project.open(path)) {
            assertEquals(0, opened.getWarningsFromOpen().length);
            for (SimObject object : opened.getObjects()) {
                assertEquals(saved.remove(object.getName()), Description.of(whole(opened, object)), object.getName());
            }
        }
        assertEquals(Set.of(), saved.keySet());
    }

    /** The object under its own class. */
    private static NativeObject whole(SimObject object) {
        return whole(samples.project, object);
    }

    private static NativeObject whole(Project project, SimObject object) {
        String kind = object.getName().replaceAll(" .*", "");
        return Arrays.stream(Project.class.getMethods())
                .filter(method -> method.getName().equals("get" + kind)
                        && Arrays.equals(method.getParameterTypes(), new Class<?>[] {GlobalId.class}))
                .findFirst()
                .map(method -> {
                    try {
                        return (NativeObject) method.invoke(project, object.getId());
                    } catch (ReflectiveOperationException failure) {
                        throw new AssertionError(failure);
                    }
                })
                .orElse(object);
    }
}

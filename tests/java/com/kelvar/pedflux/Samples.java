package com.kelvar.pedflux;

import java.lang.reflect.Array;
import java.lang.reflect.Constructor;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;

/**
 * A project with two of every kind of object, and values for every type of parameter, each time others. Which value an
 * operation accepts is its own business: candidates are offered until it takes one.
 */
final class Samples {
    final Project project = Project.create();
    /** By the kind's name, two each. */
    final Map<String, SimObject[]> objects = new TreeMap<>();
    /** What could not be made, and why. */
    final Map<String, String> notMade = new TreeMap<>();
    private final Map<Class<?>, List<Class<?>>> nodes = new LinkedHashMap<>();
    private int number;

    Samples(List<Class<?>> classes) throws ReflectiveOperationException {
        for (Class<?> one : classes) {
            for (Class<?> base = one.getSuperclass(); base != NativeObject.class && base != null && base != Object.class;
                    base = base.getSuperclass()) {
                nodes.computeIfAbsent(base, key -> new ArrayList<>()).add(one);
            }
        }
        drawPlan();
        List<Method> factories = Arrays.stream(Project.class.getMethods())
                .filter(method -> method.getName().startsWith("create") && method.getParameterCount() > 0
                        && method.getParameterTypes()[0] == String.class)
                .sorted(Comparator.comparing(Method::getParameterCount).thenComparing(Method::toString))
                .toList();
        // Some kinds refer to others, which may come later in the list.
        for (int round = 0; round < 2; ++round) {
            for (Method factory : factories) {
                String kind = factory.getReturnType().getSimpleName();
                if (objects.containsKey(kind)) continue;
                SimObject[] made = new SimObject[2];
                for (int i = 0; i < 2; ++i) {
                    String name = kind + " " + (i + 1);
                    Offer offer = offer(factory, project, name);
                    if (offer.result == null) {
                        notMade.put(kind, offer.refusal);
                        break;
                    }
                    made[i] = (SimObject) offer.result;
                }
                if (made[1] == null) continue;
                objects.put(kind, made);
                notMade.remove(kind);
            }
        }
    }

    /** A floor that everything else stands on. */
    private void drawPlan() {
        Vec2d[] outline = {new Vec2d(-50, -50), new Vec2d(250, -50), new Vec2d(250, 50), new Vec2d(-50, 50)};
        project.createFloor("Ground", MeshGeometry.createFlatPolygon(0, outline));
    }

    /** The accepted call, or the last refusal. */
    record Offer(Object result, Object[] arguments, String refusal) {}

    /** Calls a method or constructor with candidates for its parameters until it accepts them. */
    Offer offer(java.lang.reflect.Executable operation, Object target, Object... first)
            throws ReflectiveOperationException {
        Class<?>[] types = operation.getParameterTypes();
        List<List<Object>> candidates = new ArrayList<>();
        for (int i = 0; i < types.length; ++i) {
            candidates.add(i < first.length ? List.of(first[i]) : candidates(types[i]));
            if (candidates.get(i).isEmpty()) return new Offer(null, null, "nothing to offer for " + types[i]);
        }
        int[] chosen = new int[types.length];
        String refusal = "";
        for (int attempt = 0; attempt < 400; ++attempt) {
            Object[] arguments = new Object[types.length];
            for (int i = 0; i < types.length; ++i) arguments[i] = candidates.get(i).get(chosen[i]);
            try {
                Object result = operation instanceof Constructor<?> constructor
                        ? constructor.newInstance(arguments)
                        : ((Method) operation).invoke(target, arguments);
                return new Offer(result == null ? Boolean.TRUE : result, arguments, null);
            } catch (InvocationTargetException refused) {
                if (!(refused.getCause() instanceof Exception)) throw new AssertionError(operation.toString(), refused.getCause());
                refusal = refused.getCause().getMessage();
            }
            // The next combination, the last parameter changing fastest.
            int place = types.length - 1;
            while (place >= 0 && ++chosen[place] == candidates.get(place).size()) chosen[place--] = 0;
            if (place < 0) break;
        }
        return new Offer(null, null, refusal);
    }

    /** A new object of a class that programs make themselves; null when no constructor takes what there is. */
    NativeObject made(Class<?> type) throws ReflectiveOperationException {
        for (Constructor<?> constructor : constructors(type)) {
            Offer offer = offer(constructor, null);
            if (offer.result != null) {
                notMade.remove(type.getSimpleName());
                return (NativeObject) offer.result;
            }
            notMade.put(type.getSimpleName(), offer.refusal);
        }
        return null;
    }

    /** Those of programs, the longest first; the handle's and the copy's are left out. */
    static List<Constructor<?>> constructors(Class<?> type) {
        return Arrays.stream(type.getConstructors())
                .filter(one -> !Arrays.equals(one.getParameterTypes(), new Class<?>[] {long.class, boolean.class})
                        && !Arrays.equals(one.getParameterTypes(), new Class<?>[] {type}))
                .sorted(Comparator.comparing((Constructor<?> one) -> -one.getParameterCount()).thenComparing(Object::toString))
                .toList();
    }

    private GlobalId id(String kind) {
        SimObject[] pair = objects.get(kind);
        return pair == null ? GlobalId.generate() : pair[number % 2].getId();
    }

    private int depth;

    private boolean isLeaf(Class<?> kind) {
        return constructors(kind).stream().anyMatch(one -> Arrays.stream(one.getParameterTypes())
                .map(type -> type.isArray() ? type.getComponentType() : type)
                .noneMatch(nodes::containsKey));
    }

    List<Object> candidates(Class<?> type) throws ReflectiveOperationException {
        int n = ++number;
        List<Object> found = new ArrayList<>();
        if (type == boolean.class) {
            found.addAll(List.of(n % 2 == 0, n % 2 != 0));
        } else if (type == int.class) {
            found.addAll(List.of(n + 10, n % 7 + 1, n % 2, 0));
        } else if (type == long.class) {
            found.add(n + 10L);
        } else if (type == double.class) {
            found.addAll(List.of(n % 89 * 0.01 + 0.055, n % 89 * 0.0001 + 0.001, n + 0.5, n % 3 + 1.25, -1.5 - n, 90.5));
        } else if (type == float.class) {
            found.addAll(List.of(n % 89 * 0.5f + 0.25f, n + 0.5f));
        } else if (type == String.class) {
            found.add("Text " + n);
        } else if (type.isEnum()) {
            Object[] constants = type.getEnumConstants();
            for (int i = 0; i < constants.length; ++i) found.add(constants[(n + i) % constants.length]);
        } else if (type == GlobalId.class) {
            for (SimObject[] pair : objects.values()) found.add(pair[n % 2].getId());
        } else if (type == int[].class) {
            found.addAll(List.of(new int[] {n, n + 100}, new int[] {1, 2}));
        } else if (type == double[].class) {
            found.addAll(List.of(new double[] {n + 0.5, 0.25}, new double[] {n + 0.5}));
        } else if (type == String[].class) {
            found.add(new String[] {"one " + n, "two"});
        } else if (type == Vec3d[].class) {
            found.add(new Vec3d[] {new Vec3d(n, 0, 1), new Vec3d(n + 2, 0, 1), new Vec3d(n + 2, 0, 3)});
        } else if (type == GlobalId[].class) {
            for (SimObject[] pair : objects.values()) found.add(new GlobalId[] {pair[0].getId(), pair[1].getId()});
            for (SimObject[] pair : objects.values()) found.add(new GlobalId[] {pair[n % 2].getId()});
        } else if (type.isArray()) {
            List<Object> first = candidates(type.getComponentType());
            List<Object> second = candidates(type.getComponentType());
            for (int i = 0; i < Math.min(first.size(), second.size()); ++i) {
                Object list = Array.newInstance(type.getComponentType(), 2);
                Array.set(list, 0, first.get(i));
                Array.set(list, 1, second.get(i));
                found.add(list);
            }
        } else {
            found.addAll(objectsOf(type, n));
        }
        return found;
    }

    private List<Object> objectsOf(Class<?> type, int n) throws ReflectiveOperationException {
        List<Object> found = new ArrayList<>();
        double x = 5 + n % 40 * 4;
        switch (type.getSimpleName()) {
            case "Vec2d" -> found.add(new Vec2d(n, 0.5));
            case "Vec3d" -> found.addAll(List.of(new Vec3d(n, 0.5, 0.25), new Vec3d(0, 1, 0)));
            case "Axis3d" -> found.add(new Axis3d(new Vec3d(n, 0, 0), new Vec3d(0, 1, 0)));
            case "Color" -> found.add(new Color(n % 97 / 97.0, 0.25, 0.75));
            case "MeshGeometry" -> found.addAll(List.of(
                    MeshGeometry.createVerticalRectangle(new Vec3d(x, 0, 0), new Vec3d(x, 2, 2)),
                    MeshGeometry.createFlatPolygon(0, new Vec2d[] {new Vec2d(x, 0), new Vec2d(x + 2, 0), new Vec2d(x + 2, 2)})));
            case "PolylineGeometry" -> found.add(
                    PolylineGeometry.create(new Vec3d[] {new Vec3d(x, 0, 1), new Vec3d(x + 2, 0, 1)}));
            case "RectangleGeometry" -> found.add(
                    new RectangleGeometry(new Vec3d(x, 1, 1), new Vec3d(1, 0, 0), new Vec3d(0, 1, 0), 2, 1));
            case "Geometry" -> {
                found.addAll(candidates(MeshGeometry.class));
                found.addAll(candidates(PolylineGeometry.class));
                found.addAll(candidates(RectangleGeometry.class));
            }
            case "Distribution" -> found.addAll(List.of(Distribution.createUniform(0.25 + n % 50 * 0.01, 0.9),
                    Distribution.createConstant(n + 1), Distribution.createConstant(1.5)));
            case "TimeReference" -> found.add(TimeReference.absolute(n));
            case "TimeRange" -> found.add(new TimeRange(n, n + 100));
            case "ColorFunction" -> found.add(ColorFunction.createFruinWalkway(ColorTransition.values()[n % 2]));
            case "AvatarPreset" -> found.addAll(List.of(Project.getAvatarPresets()));
            case "PopulationArrival" -> found.add(PopulationArrival.createEvenlySpaced(n));
            case "Trip" -> found.add(new Trip(id("Portal"), id("Zone"), TripBoundaryMethod.values()[n % 2],
                    TripBoundaryMethod.values()[n / 2 % 2]));
            default -> {
                if (SimObject.class.isAssignableFrom(type)) {
                    SimObject[] pair = objects.get(type.getSimpleName());
                    if (pair != null) found.add(pair[n % 2]);
                    return found;
                }
                List<Class<?>> kinds = new ArrayList<>(nodes.getOrDefault(type, List.of()));
                if (!Modifier.isAbstract(type.getModifiers())) kinds.add(type);
                // What nests ends with what does not.
                if (depth > 0) kinds.removeIf(kind -> !isLeaf(kind));
                ++depth;
                for (int i = 0; i < kinds.size() && found.size() < 4; ++i) {
                    NativeObject made = made(kinds.get((i + n) % kinds.size()));
                    if (made != null) found.add(made);
                }
                --depth;
                // What every object takes, whatever the others refer to.
                switch (type.getSimpleName()) {
                    case "AgentFilter" -> found.add(new SpeedFilter(0, n));
                    case "AgentTest" -> found.add(new RandomChanceTest(n % 89 * 0.01));
                    case "AgentAction" -> found.add(new DoNothingAction());
                    case "Tally" -> found.add(new VariableTally(n));
                    case "Transition" -> found.add(new AtPortalTransition(id("Portal")));
                    case "PopulationSource" -> found.add(new CountPopulationSource(new GlobalId[] {id("Portal")}, n));
                    case "Trigger" -> found.addAll(List.of(new AbsoluteTimeTrigger(n),
                            new ClockInRangeTrigger(n, ComparisonType.values()[n % 2])));
                    case "TriggerRange" -> found.add(new OverDurationTriggerRange(new AbsoluteTimeTrigger(n), n));
                    default -> {}
                }
            }
        }
        return found;
    }
}

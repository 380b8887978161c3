package com.kelvar.pedflux;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.TreeMap;

/**
 * What all getters of an object return, as text: two objects are equal where their descriptions are. Objects are looked at
 * as the getters declare them, since the SDK returns them so.
 */
final class Description {
    private static final int DEEPEST = 6;

    private Description() {}

    /** By the getter's name. A getter that refuses shows what it says. */
    static Map<String, String> of(NativeObject object) {
        return of(object, object.getClass(), 0);
    }

    static String text(Object value, Class<?> declared) {
        return text(value, declared, 0);
    }

    static List<Method> getters(Class<?> type) {
        return Arrays.stream(type.getMethods())
                .filter(method -> method.getParameterCount() == 0 && !Modifier.isStatic(method.getModifiers())
                        && method.getReturnType() != void.class && method.getDeclaringClass() != Object.class
                        && method.getName().matches("(get|is|has|uses|does|can)[A-Z].*"))
                .sorted(Comparator.comparing(Method::getName))
                .toList();
    }

    /** Null when the getter refuses because nothing is set. */
    static Object read(Method getter, Object object) throws IllegalAccessException {
        try {
            return getter.invoke(object);
        } catch (InvocationTargetException refused) {
            if (refused.getCause() instanceof Exception) return null;
            throw new AssertionError(getter.toString(), refused.getCause());
        }
    }

    private static Map<String, String> of(NativeObject object, Class<?> declared, int depth) {
        Map<String, String> described = new TreeMap<>();
        try {
            for (Method getter : getters(declared)) {
                described.put(getter.getName(), text(read(getter, object), getter.getReturnType(), depth + 1));
            }
        } catch (IllegalAccessException hidden) {
            throw new AssertionError(hidden);
        }
        return described;
    }

    private static String text(Object value, Class<?> declared, int depth) {
        if (value == null) return "none";
        if (value instanceof Object[] list) {
            return Arrays.stream(list).map(one -> text(one, declared.getComponentType(), depth)).toList().toString();
        }
        if (value instanceof double[] list) return Arrays.toString(list);
        if (value instanceof int[] list) return Arrays.toString(list);
        if (value instanceof SimObject object && depth > 0) return object.getId().toString();
        if (value instanceof Project || !(value instanceof NativeObject)) return Objects.toString(value);
        NativeObject object = (NativeObject) value;
        // Values say what they are; others are told by their getters.
        if (object instanceof GlobalId || object instanceof Vec3d || object instanceof Vec2d) return object.toString();
        if (depth > DEEPEST) return declared.getSimpleName();
        return declared.getSimpleName() + of(object, declared, depth);
    }
}

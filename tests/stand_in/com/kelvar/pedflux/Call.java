package com.kelvar.pedflux;

import java.lang.reflect.Array;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/** One call of an export with arguments that differ from each other, and what the SDK must see of them. */
final class Call implements AutoCloseable {
    /** How an argument is given. */
    enum Given { PRESENT, ABSENT, WITH_NULL_IN_THE_MIDDLE }

    private record Handle(String type, long address) {}

    private static int number = 100;

    final Export export;
    final List<String> expected = new ArrayList<>();
    /** The address of the object that the operation is called on; "0" for none. */
    String object = "0";
    private final List<Object> given = new ArrayList<>();
    private final List<Handle> handles = new ArrayList<>();
    private Object result;

    /** All arguments are present but for the one at `index`. */
    Call(Export export, int index, Given how) throws ReflectiveOperationException {
        this.export = export;
        for (int i = 0; i < export.arguments().size(); ++i) {
            String type = export.arguments().get(i);
            Given one = i == index ? how : Given.PRESENT;
            boolean isObject = i == 0 && export.hasObject();
            if (Export.isClass(type)) {
                giveHandle(type, one, isObject, !isObject && !export.parameter(i).contains("std::shared_ptr"));
            } else {
                giveValue(type, one);
            }
        }
    }

    Call(Export export) throws ReflectiveOperationException {
        this(export, -1, Given.PRESENT);
    }

    private void giveHandle(String type, Given how, boolean isObject, boolean asSuch) {
        long handle = 0;
        if (how == Given.PRESENT) {
            handle = StandIn.make(type);
            handles.add(new Handle(type, handle));
        }
        given.add(handle);
        if (export.takesProxies()) given.add(null);
        String described = handle == 0 ? "0" : asSuch ? StandIn.content(type, handle) : StandIn.describe(type, handle);
        if (isObject) {
            object = StandIn.isValue(type) ? Long.toString(handle) : described;
        } else {
            expected.add(described);
        }
    }

    private void giveValue(String type, Given how) throws ReflectiveOperationException {
        int n = ++number;
        switch (type) {
            case "boolean" -> give(n % 2 == 0, n % 2 == 0 ? "true" : "false");
            case "int" -> give(n, Integer.toString(n));
            // The high halves do not cross.
            case "long" -> give(n + (1L << 32), Integer.toString(n));
            case "char" -> give((char) (n % 100 + 256), Integer.toString(n % 100));
            case "float" -> give(n % 1000 / 1024f, Double.toString(n % 1000 / 1024.0));
            // Below 1, since the headers themselves check some.
            case "double" -> give(n % 1000 / 1024.0, Double.toString(n % 1000 / 1024.0));
            case "byte[]" -> give(("text " + n).getBytes(StandardCharsets.UTF_8), "text " + n);
            case "int[]" -> give(new int[] {n, -n}, "[" + n + ", " + -n + "]");
            case "double[]" -> give(new double[] {n, 0.5}, "[" + n + ", 0.5]");
            case "String[]" -> give(new String[] {"one " + n, "two"}, "[one " + n + ", two]");
            default -> giveList(type.substring(0, type.length() - 2), how);
        }
    }

    private void give(Object value, String text) {
        given.add(value);
        expected.add(text);
    }

    private void giveList(String type, Given how) throws ReflectiveOperationException {
        boolean hole = how == Given.WITH_NULL_IN_THE_MIDDLE;
        int length = how == Given.ABSENT ? 0 : hole ? 3 : 2;
        Class<?> proxy = Class.forName("com.kelvar.pedflux." + type);
        Object list = Array.newInstance(proxy, length);
        List<String> texts = new ArrayList<>();
        for (int i = 0; i < length; ++i) {
            if (hole && i == 1) {
                texts.add(StandIn.missing(type));
                continue;
            }
            long handle = StandIn.make(type);
            handles.add(new Handle(type, handle));
            texts.add(StandIn.describe(type, handle));
            Array.set(list, i, proxy.getDeclaredConstructor(long.class, boolean.class).newInstance(handle, false));
        }
        give(list, "[" + String.join(", ", texts) + "]");
    }

    /** Calls the native method; returns what it threw, or null. */
    Throwable run() throws IllegalAccessException {
        StandIn.records();
        try {
            result = export.method().invoke(null, given.toArray());
            return null;
        } catch (InvocationTargetException thrown) {
            return thrown.getCause();
        }
    }

    Object result() {
        return result;
    }

    /** The handle of the only argument, for what takes handles alone. */
    long handle() {
        return handles.get(0).address;
    }

    /** The result as records show it. */
    String describedResult() throws ReflectiveOperationException {
        String type = export.result();
        if (result instanceof byte[] bytes) return new String(bytes, StandardCharsets.UTF_8);
        if (result instanceof int[] numbers) return Arrays.toString(numbers);
        if (result instanceof double[] numbers) return Arrays.toString(numbers);
        if (result instanceof Object[] list) {
            List<String> texts = new ArrayList<>();
            for (Object element : list) {
                if (element instanceof String text) {
                    texts.add(text);
                } else {
                    texts.add(StandIn.describe(type.substring(0, type.length() - 2), handleOf(element)));
                }
            }
            return texts.toString();
        }
        if (!Export.isClass(type)) return String.valueOf(result instanceof Character c ? (int) c : result);
        if ((long) result == 0) return "0";
        boolean shared = export.operation().startsWith("std::shared_ptr") || export.operation().startsWith("static std::shared_ptr");
        return shared ? StandIn.describe(type, (long) result) : StandIn.content(type, (long) result);
    }

    private static long handleOf(Object proxy) throws ReflectiveOperationException {
        Field field = proxy.getClass().getDeclaredField("swigCPtr");
        field.setAccessible(true);
        return (long) field.get(proxy);
    }

    /** Releases what was given and what was returned. */
    @Override
    public void close() {
        try {
            for (Handle handle : handles) release(handle.type, handle.address);
            if (result instanceof Long handle && handle != 0 && Export.isClass(export.result())
                    && !export.operation().startsWith("constant ")) {
                release(export.result(), handle);
            }
            if (result instanceof Object[] list) {
                for (Object element : list) {
                    if (element instanceof NativeObject proxy) proxy.delete();
                }
            }
        } catch (ReflectiveOperationException failure) {
            throw new AssertionError(failure);
        }
    }

    void forgetArguments() {
        handles.clear();
    }

    private static void release(String type, long handle) throws ReflectiveOperationException {
        Method delete = pedfluxJNI.class.getDeclaredMethod("delete_" + type, long.class);
        delete.setAccessible(true);
        delete.invoke(null, handle);
    }
}

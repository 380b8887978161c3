package com.kelvar.pedflux;

import java.io.IOException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;

/** A row of the table of the surface, and the native method that it tells of. */
record Export(Method method, List<String> arguments, String result, String operation) {
    static List<Export> all() {
        Map<String, Method> natives = new HashMap<>();
        for (Method method : pedfluxJNI.class.getDeclaredMethods()) {
            if (!Modifier.isNative(method.getModifiers())) continue;
            method.setAccessible(true);
            natives.put(method.getName(), method);
        }
        List<Export> exports = new ArrayList<>();
        try {
            List<String> lines = Files.readAllLines(Path.of(System.getProperty("pedflux.test.surface")));
            for (String line : lines.subList(1, lines.size())) {
                String[] columns = line.split("\t", -1);
                List<String> arguments = columns[1].isEmpty() ? List.of() : List.of(columns[1].split(","));
                String operation = columns[3].replaceFirst("^virtual ", "");
                exports.add(new Export(natives.get(columns[0]), arguments, columns[2], operation));
            }
        } catch (IOException failure) {
            throw new AssertionError(failure);
        }
        return exports;
    }

    static boolean isClass(String type) {
        return Character.isUpperCase(type.charAt(0)) && !type.endsWith("[]");
    }

    String name() {
        return method.getName();
    }

    /** Whether it reaches an operation of the SDK, rather than being something that the bridge brings along. */
    boolean reachesTheSdk() {
        return operation.contains("::") && !className().equals("Exception") && !StandIn.isInlined(operation);
    }

    String className() {
        String name = name().replaceFirst("^(new|delete)_", "");
        int end = name.indexOf('_');
        return end < 0 ? name : name.substring(0, end);
    }

    boolean constructs() {
        return name().startsWith("new_");
    }

    /** Whether the first argument is the object that the operation is called on. */
    boolean hasObject() {
        return !constructs() && !operation.startsWith("static ") && !operation.startsWith("constant ");
    }

    boolean takesProxies() {
        return !operation.equals("delete") && !operation.equals("upcast");
    }

    /** A copy constructor that the SDK leaves to the compiler shows no operation. */
    boolean copies() {
        return constructs() && parameters().size() == 1 && parameters().get(0).equals("pedflux::" + className() + " const &");
    }

    /** The SDK's types of the parameters, without the object. */
    List<String> parameters() {
        List<String> parameters = new ArrayList<>();
        String list = operation.substring(operation.indexOf("(") + 1, operation.lastIndexOf(")"));
        int depth = 0;
        int start = 0;
        for (int i = 0; i <= list.length(); ++i) {
            char letter = i < list.length() ? list.charAt(i) : ',';
            if (letter == '<') ++depth;
            if (letter == '>') --depth;
            if (letter == ',' && depth == 0) {
                if (i > start) parameters.add(list.substring(start, i).strip());
                start = i + 1;
            }
        }
        return parameters;
    }

    /** The SDK's type of an argument; empty for the object and where no operation of the SDK is behind it. */
    String parameter(int argument) {
        int index = hasObject() ? argument - 1 : argument;
        return index < 0 || !operation.contains("(") ? "" : parameters().get(index);
    }
}

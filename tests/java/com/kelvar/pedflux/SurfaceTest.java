package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.lang.invoke.MethodType;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.TreeSet;
import java.util.stream.Collectors;
import org.junit.jupiter.api.Test;

/** The three faces of the surface are one: what the library shows, what the tables say, what Java declares. */
class SurfaceTest {
    private static final String SYMBOL = "Java_com_kelvar_pedflux_pedfluxJNI_";

    private static TreeSet<String> listed() throws IOException {
        return new TreeSet<>(Files.readAllLines(Path.of(System.getProperty("pedflux.test.exports"))));
    }

    /** Programs are compiled against these names; each is a promise. */
    @Test
    void theSurfaceIsWhole() throws IOException {
        TreeSet<String> promised = new TreeSet<>(Files.readAllLines(Path.of(System.getProperty("pedflux.test.promised"))));
        assertEquals(4632, promised.size());
        assertEquals(promised, listed());
    }

    @Test
    void javaDeclaresWhatIsListed() throws IOException {
        TreeSet<String> natives = new TreeSet<>();
        for (Method method : pedfluxJNI.class.getDeclaredMethods()) {
            if (!Modifier.isNative(method.getModifiers())) continue;
            MethodType type = MethodType.methodType(method.getReturnType(), method.getParameterTypes());
            natives.add(method.getName() + type.toMethodDescriptorString());
        }
        assertTrue(natives.size() > 300, "only " + natives.size() + " native methods");
        assertEquals(listed(), natives);
    }

    @Test
    void theLibraryShowsWhatIsListedAndNothingElse() throws IOException, InterruptedException {
        TreeSet<String> expected = listed().stream()
                .map(line -> SYMBOL + line.substring(0, line.indexOf('(')).replace("_", "_1"))
                .collect(Collectors.toCollection(TreeSet::new));
        TreeSet<String> shown = new TreeSet<>();
        for (String line : symbols("--defined-only")) shown.add(line.substring(line.lastIndexOf(' ') + 1));
        assertEquals(expected, shown);
    }

    /** What the bridge needs: the SDK, the C++ and C libraries. */
    @Test
    void theLibraryNeedsNothingElse() throws IOException, InterruptedException {
        for (String line : symbols("--undefined-only")) {
            String name = line.substring(line.lastIndexOf(' ') + 1);
            boolean known = name.contains("7pedflux") || name.contains("@") || name.startsWith("_ITM_")
                    || name.equals("__gmon_start__");
            assertTrue(known, name);
        }
    }

    @Test
    void everyEnumerationFindsItsConstants() throws ReflectiveOperationException, IOException {
        List<String> names = new ArrayList<>();
        for (Method method : pedfluxProxies()) {
            for (Class<?> type : method.getParameterTypes()) {
                if (!type.isEnum()) continue;
                names.add(type.getSimpleName());
                Method fromValue = type.getMethod("fromValue", int.class);
                for (Object constant : type.getEnumConstants()) {
                    Object value = type.getMethod("value").invoke(constant);
                    assertEquals(constant, fromValue.invoke(null, value));
                }
            }
        }
        assertTrue(names.contains("LogOutputLevel"), names.toString());
    }

    private static List<Method> pedfluxProxies() throws ReflectiveOperationException, IOException {
        TreeSet<String> classes = new TreeSet<>();
        for (String line : listed()) {
            if (line.startsWith("delete_")) classes.add(line.substring("delete_".length(), line.indexOf('(')));
        }
        List<Method> methods = new ArrayList<>();
        for (String name : classes) {
            methods.addAll(Arrays.asList(Class.forName("com.kelvar.pedflux." + name).getDeclaredMethods()));
        }
        return methods;
    }

    private static List<String> symbols(String which) throws IOException, InterruptedException {
        Process nm = new ProcessBuilder("nm", "--dynamic", which, System.getProperty("pedflux.test.library"))
                .redirectError(ProcessBuilder.Redirect.INHERIT)
                .start();
        String output = new String(nm.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        assertEquals(0, nm.waitFor());
        return output.lines().toList();
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.kelvar.elsewhere.Program;
import java.io.IOException;
import java.io.InputStream;
import java.lang.module.ModuleDescriptor;
import java.lang.module.ModuleFinder;
import java.lang.module.ModuleReference;
import java.net.URISyntaxException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import java.util.jar.Attributes;
import java.util.jar.JarEntry;
import java.util.jar.JarOutputStream;
import java.util.jar.Manifest;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The libraries are found where they should be, or their absence is told in one sentence. Each case needs its own process. */
class LoaderTest {
    @TempDir
    Path directory;

    /** What docs/java.md asks of programs, so that newer virtual machines load native libraries without a word. */
    private static final String GRANT = "--enable-native-access=ALL-UNNAMED";

    /** From this version on, virtual machines warn of programs that do not ask for it, and can be told to refuse them. */
    private static final int FIRST_THAT_ASKS = 24;

    private record Run(int status, String output) {}

    private Run run(String... options) throws IOException, InterruptedException {
        List<String> arguments = new ArrayList<>(List.of("-classpath", System.getProperty("java.class.path")));
        arguments.addAll(List.of(options));
        arguments.add(Program.class.getName());
        return runJava(arguments);
    }

    private Run runJava(List<String> arguments) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(List.of(
                Path.of(System.getProperty("java.home"), "bin", "java").toString(), "-Xshare:auto",
                "-Djava.io.tmpdir=" + directory));
        command.addAll(arguments);
        ProcessBuilder builder = new ProcessBuilder(command).redirectErrorStream(true);
        builder.environment().remove("LD_PRELOAD");
        Process process = builder.start();
        String output = new String(process.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        return new Run(process.waitFor(), output);
    }

    /** As strict as the virtual machine can be made, which future ones are meant to be on their own. */
    private static List<String> strict() {
        return Runtime.version().feature() < FIRST_THAT_ASKS ? List.of() : List.of("--illegal-native-access=deny");
    }

    private static Path jar() throws URISyntaxException {
        return Path.of(Vec3d.class.getProtectionDomain().getCodeSource().getLocation().toURI());
    }

    @Test
    void theJarCarriesThemAndLeavesNothingBehind() throws IOException, InterruptedException {
        Run run = run(GRANT);
        assertEquals(new Run(0, "length 5.0\n"), run);
        try (Stream<Path> left = Files.list(directory)) {
            assertEquals(List.of(), left.filter(path -> path.getFileName().toString().startsWith("pedflux")).toList());
        }
    }

    @Test
    void aDirectoryTakesTheirPlace() throws IOException, InterruptedException {
        Path libraries = Path.of(System.getProperty("pedflux.test.library")).getParent();
        Path sdk = Path.of(System.getProperty("pedflux.test.sdk"));
        Files.copy(libraries.resolve("libpedfluxJNI.so"), directory.resolve("libpedfluxJNI.so"));
        Run incomplete = run(GRANT, "-Dpedflux.library.path=" + directory);
        assertEquals(1, incomplete.status());
        assertTrue(incomplete.output().contains("there is no file " + directory.resolve("libpfsdk_11_8.so")), incomplete.output());
        Files.copy(sdk, directory.resolve("libpfsdk_11_8.so"));
        assertEquals(new Run(0, "length 5.0\n"), run(GRANT, "-Dpedflux.library.path=" + directory));
    }

    @Test
    void programsRunWithoutTheOptionWhereTheyMay() throws IOException, InterruptedException {
        if (Runtime.version().feature() < FIRST_THAT_ASKS) {
            assertEquals(new Run(0, "length 5.0\n"), run());
            return;
        }
        Run warned = run("--illegal-native-access=warn");
        assertEquals(0, warned.status());
        assertTrue(warned.output().endsWith("\nlength 5.0\n"), warned.output());
        assertTrue(warned.output().contains("Use " + GRANT), warned.output());
        Run refused = run("--illegal-native-access=deny");
        assertEquals(1, refused.status());
        assertTrue(refused.output().contains("IllegalCallerException"), refused.output());
    }

    @Test
    void theOptionIsEnoughWhereItIsNeeded() throws IOException, InterruptedException {
        List<String> options = new ArrayList<>(strict());
        options.add(GRANT);
        assertEquals(new Run(0, "length 5.0\n"), run(options.toArray(String[]::new)));
    }

    @Test
    void aJarThatIsStartedCanAskForIt() throws IOException, InterruptedException, URISyntaxException {
        Manifest manifest = new Manifest();
        Attributes attributes = manifest.getMainAttributes();
        attributes.put(Attributes.Name.MANIFEST_VERSION, "1.0");
        attributes.put(Attributes.Name.MAIN_CLASS, Program.class.getName());
        attributes.put(Attributes.Name.CLASS_PATH, jar().toUri().toString());
        attributes.putValue("Enable-Native-Access", "ALL-UNNAMED");
        Path program = directory.resolve("program.jar");
        String entry = Program.class.getName().replace('.', '/') + ".class";
        try (JarOutputStream file = new JarOutputStream(Files.newOutputStream(program), manifest);
                InputStream compiled = Program.class.getClassLoader().getResourceAsStream(entry)) {
            file.putNextEntry(new JarEntry(entry));
            compiled.transferTo(file);
        }
        List<String> arguments = new ArrayList<>(strict());
        arguments.addAll(List.of("-jar", program.toString()));
        assertEquals(new Run(0, "length 5.0\n"), runJava(arguments));
    }

    @Test
    void theJarIsAModuleThatCanBeGrantedAccessAlone() throws IOException, InterruptedException, URISyntaxException {
        List<ModuleDescriptor> found =
                ModuleFinder.of(jar()).findAll().stream().map(ModuleReference::descriptor).toList();
        assertEquals(List.of("com.kelvar.pedflux"), found.stream().map(ModuleDescriptor::name).toList());
        assertEquals(Set.of("com.kelvar.pedflux"), found.get(0).packages());
        List<String> arguments = new ArrayList<>(strict());
        arguments.addAll(List.of("--module-path", jar().toString(), "--add-modules", "com.kelvar.pedflux",
                "--enable-native-access=com.kelvar.pedflux"));
        assertEquals(new Run(0, "length 5.0\n"), run(arguments.toArray(String[]::new)));
    }

    @Test
    void aPlatformWithoutLibrariesIsNamed() throws IOException, InterruptedException {
        Run run = run("-Dos.arch=pdp11");
        assertEquals(1, run.status());
        assertTrue(run.output().contains("the jar has no native libraries for this platform (native/linux-pdp11/"), run.output());
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The libraries are found where they should be, or their absence is told in one sentence. Each case needs its own process. */
class LoaderTest {
    @TempDir
    Path directory;

    /** Prints a value that only the native libraries can compute. */
    public static final class Program {
        public static void main(String[] arguments) {
            System.out.println("length " + new Vec3d(3, 4, 0).getLength());
        }
    }

    private record Run(int status, String output) {}

    private Run run(String... options) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(List.of(
                Path.of(System.getProperty("java.home"), "bin", "java").toString(), "-Xshare:auto",
                "-Djava.io.tmpdir=" + directory, "-classpath", System.getProperty("java.class.path")));
        command.addAll(List.of(options));
        command.add(Program.class.getName());
        ProcessBuilder builder = new ProcessBuilder(command).redirectErrorStream(true);
        builder.environment().remove("LD_PRELOAD");
        Process process = builder.start();
        String output = new String(process.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        return new Run(process.waitFor(), output);
    }

    @Test
    void theJarCarriesThemAndLeavesNothingBehind() throws IOException, InterruptedException {
        Run run = run();
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
        Run incomplete = run("-Dpedflux.library.path=" + directory);
        assertEquals(1, incomplete.status());
        assertTrue(incomplete.output().contains("there is no file " + directory.resolve("libpfsdk_11_8.so")), incomplete.output());
        Files.copy(sdk, directory.resolve("libpfsdk_11_8.so"));
        assertEquals(new Run(0, "length 5.0\n"), run("-Dpedflux.library.path=" + directory));
    }

    @Test
    void aPlatformWithoutLibrariesIsNamed() throws IOException, InterruptedException {
        Run run = run("-Dos.arch=pdp11");
        assertEquals(1, run.status());
        assertTrue(run.output().contains("the jar has no native libraries for this platform (native/linux-pdp11/"), run.output());
    }
}

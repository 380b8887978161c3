package com.kelvar.pedflux;

import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Locale;

/**
 * Loads the native libraries: from the directory that the system property {@code pedflux.library.path} names, so that
 * another SDK can be put in place, or else from the jar. A directory without one of both libraries is an error, since a
 * bridge and an SDK that do not fit each other must not meet by accident.
 */
final class NativeLoader {
    static final String PATH_PROPERTY = "pedflux.library.path";

    /** In the order of loading: the bridge needs the SDK. */
    private static final String[] LIBRARIES = {"pfsdk_11_8", "pedfluxJNI"};

    private NativeLoader() {}

    static void load() {
        String path = System.getProperty(PATH_PROPERTY);
        if (path != null) {
            loadFrom(Path.of(path).toAbsolutePath());
        } else {
            loadFromJar("native/" + platform() + "/");
        }
    }

    private static void loadFrom(Path directory) {
        for (String library : LIBRARIES) {
            Path file = directory.resolve(System.mapLibraryName(library));
            if (!Files.isRegularFile(file)) {
                throw new UnsatisfiedLinkError("there is no file " + file + "; -D" + PATH_PROPERTY
                        + " must name the directory with both native libraries");
            }
            System.load(file.toString());
        }
    }

    /**
     * The libraries need files to be loaded from. Those are private, and gone as soon as they are loaded where the
     * system allows it, so that nothing stays behind however the virtual machine ends.
     */
    private static void loadFromJar(String resources) {
        try {
            Path directory = Files.createTempDirectory("pedflux-");
            directory.toFile().deleteOnExit();
            try {
                for (String library : LIBRARIES) extract(resources, System.mapLibraryName(library), directory);
                loadFrom(directory);
            } finally {
                for (String library : LIBRARIES) remove(directory.resolve(System.mapLibraryName(library)));
                remove(directory);
            }
        } catch (IOException failure) {
            throw new UncheckedIOException(
                    "the native libraries cannot be unpacked to a temporary directory; -D" + PATH_PROPERTY
                            + " can name a directory that has them",
                    failure);
        }
    }

    private static void extract(String resources, String name, Path directory) throws IOException {
        try (InputStream library = NativeLoader.class.getClassLoader().getResourceAsStream(resources + name)) {
            if (library == null) {
                throw new UnsatisfiedLinkError("the jar has no native libraries for this platform (" + resources + name
                        + "); -D" + PATH_PROPERTY + " can name a directory that has them");
            }
            Files.copy(library, directory.resolve(name));
        }
    }

    private static void remove(Path path) {
        try {
            Files.deleteIfExists(path);
        } catch (IOException inUse) {
            path.toFile().deleteOnExit();
        }
    }

    /** As in "linux-x86_64". */
    private static String platform() {
        String system = System.getProperty("os.name").toLowerCase(Locale.ROOT);
        String processor = System.getProperty("os.arch").toLowerCase(Locale.ROOT);
        String systemName = system.startsWith("windows") ? "windows" : system.startsWith("mac") ? "macos" : system;
        return systemName + "-" + (processor.equals("amd64") ? "x86_64" : processor);
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * What a closed loop of calls leaves on the native heap: nothing but the texts and number lists that were passed in, which
 * the bridge keeps for good. The numbers are exact.
 */
class LeakTest {
    private static final int ROUNDS = 500;

    /** The sizes of the kept objects, of which each holds its contents in a block of its own. */
    private static final long STRING_OBJECT = 32;
    private static final long VECTOR_OBJECT = 24;
    /** Texts of up to this length are held in the string object itself. */
    private static final int LONGEST_INNER_TEXT = 15;

    private static void assertLeaves(long blocksPerRound, long bytesPerRound, Runnable round) {
        Allocations left = Allocations.leftBy(() -> {
            for (int count = 0; count < ROUNDS; ++count) round.run();
        });
        assertEquals(new Allocations(blocksPerRound * ROUNDS, bytesPerRound * ROUNDS), left);
    }

    @Test
    void proxiesThatAreClosedLeaveNothing() {
        assertLeaves(0, 0, () -> {
            try (Vec3d low = new Vec3d(0, 0, 0);
                    Vec3d high = new Vec3d(1, 1, 1);
                    MeshGeometry mesh = MeshGeometry.createBox(low, high);
                    Geometry moved = mesh.translatedBy(high);
                    MeshGeometry copy = new MeshGeometry(mesh);
                    BoundingBox3d box = ((Geometry) copy).getBoundingBox();
                    GlobalId id = GlobalId.generate()) {
                id.getString();
                for (Tri3d face : mesh.getFaces()) face.close();
            }
        });
    }

    @Test
    void listsOfObjectsAreReleasedAlsoWhenTheCallFails() {
        Tri3d good = new Tri3d(new Vec3d(0, 0, 0), new Vec3d(0, 0, 1), new Vec3d(1, 0, 0));
        Tri3d flat = new Tri3d();
        long handle = Tri3d.handleOf(good);
        assertLeaves(0, 0, () -> {
            MeshGeometry.create(new Tri3d[] {good, good}).close();
            assertThrows(Exception.class, () -> MeshGeometry.create(new Tri3d[] {good, flat}));
            assertThrows(NullPointerException.class,
                    () -> pedfluxJNI.new_RectangleGeometry__SWIG_0(new Tri3d[] {good}, 0, null));
            assertThrows(NullPointerException.class, () -> pedfluxJNI.Tri3d_translatedBy(handle, good, 0, null));
        });
    }

    @Test
    void textsAreKeptAndNothingElse() {
        for (String text : new String[] {"", "short", "exactly 15 byte", "exactly 16 bytes", "x".repeat(1000)}) {
            byte[] bytes = text.getBytes(StandardCharsets.UTF_8);
            boolean inner = bytes.length <= LONGEST_INNER_TEXT;
            // The setter keeps one copy of its own, and lets go of the former one.
            assertLeaves(inner ? 1 : 2, STRING_OBJECT + (inner ? 0 : bytes.length + 1), () -> Sdk.setFontsPath(text));
            assertLeaves(0, 0, Sdk::getFontsPath);
        }
        Sdk.setFontsPath("");
    }

    @Test
    void numberListsAreKeptAlsoWhenTheCallFails() {
        MeshGeometry mesh = MeshGeometry.createBox(new Vec3d(0, 0, 0), new Vec3d(1, 1, 1));
        Vec3d up = new Vec3d(0, 1, 0);
        int[][] lists = {{}, {0}, {0, 1, 2, 3}};
        for (int[] list : lists) {
            long contents = (long) list.length * Integer.BYTES;
            assertLeaves(list.length == 0 ? 1 : 2, VECTOR_OBJECT + contents,
                    () -> mesh.facesTranslatedBy(list, up).close());
        }
        int[] absent = {1_000_000};
        assertLeaves(2, VECTOR_OBJECT + Integer.BYTES,
                () -> assertThrows(Exception.class, () -> mesh.facesTranslatedBy(absent, up)));
    }

    @Test
    void aWholeRunLeavesOnlyItsTexts(@TempDir Path directory) {
        String path = directory.resolve("a run whose path is longer than a string object holds.pfdb").toString();
        Allocations left = Allocations.leftBy(() -> {
            try (Scope scope = new Scope()) {
                Project project = Project.create();
                RunTest.drawHall(project);
                Simulation simulation = Simulation.create(project, "Run", path);
                while (!simulation.isDone()) {
                    try (Scope frame = new Scope()) {
                        simulation.step();
                        for (Agent agent : simulation.getAllAgents()) agent.getPosition();
                    }
                }
                project.close();
            }
        });
        int texts = 6;
        int pathBytes = path.getBytes(StandardCharsets.UTF_8).length + 1;
        assertEquals(new Allocations(texts + 1, texts * STRING_OBJECT + pathBytes), left);
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertAll;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNotSame;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.HashMap;
import java.util.Map;
import java.util.TreeSet;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;

/** What a Java program sees: types, conversions, checks of arguments, and the methods that every Java object has. */
class ProxiesTest {
    private static final String IDENTIFIER = "8f14e45f-ceea-467f-a0e5-95c0d4a5c7d2";

    @Test
    void valuesComeBackAsTheyWereGiven() {
        Vec3d vector = new Vec3d(1, 2.5, -3);
        vector.setY(7);
        assertEquals("Vec3d(1.0, 7.0, -3.0)", vector.toString());
        assertEquals(new Vec3d(2, 14, -6), vector.times(2));
        assertEquals(new Vec3d(0, 0, 0), vector.minus(vector));
        assertEquals(1 + 49 + 9, vector.dot(vector));
        assertEquals("Color(0.25, 0.5, 0.75, 1.0)", new Color(0.25, 0.5, 0.75).toString());
        assertEquals(IDENTIFIER, new GlobalId(IDENTIFIER).getString());
        assertEquals("", new GlobalId().getString());
    }

    @Test
    void overloadsAreChosenByTheirJavaTypes() {
        BoundingBox3d box = new BoundingBox3d(new Vec3d(0, 0, 0), new Vec3d(1, 1, 1));
        Vec3d outside = new Vec3d(1.5, 0, 0);
        assertFalse(box.contains(outside));
        assertTrue(box.contains(outside, 0.5));
        assertTrue(box.contains(box));
        assertEquals(1.5, box.hull(outside).getXMax());
    }

    @Test
    void listsGoInAndOut() {
        Tri3d[] triangles = {
            new Tri3d(new Vec3d(0, 0, 0), new Vec3d(0, 0, 1), new Vec3d(1, 0, 0)),
            new Tri3d(new Vec3d(1, 0, 0), new Vec3d(0, 0, 1), new Vec3d(1, 0, 1))
        };
        MeshGeometry mesh = MeshGeometry.create(triangles);
        assertEquals(2, mesh.getFaceCount());
        assertEquals(4, mesh.getVertices().length);
        assertEquals(0.5, mesh.getFaces()[1].getArea(), 1e-12);
        int[] corners = mesh.getVertexIndicesForFace(0);
        assertEquals(3, corners.length);
        MeshGeometry raised = mesh.verticesTranslatedBy(new int[] {0, 1, 2, 3}, new Vec3d(0, 2, 0));
        assertEquals(2, raised.getBoundingBox().getYMin());
    }

    @Test
    void aDerivedObjectPassesAsItsBase() {
        MeshGeometry box = MeshGeometry.createBox(new Vec3d(0, 0, 0), new Vec3d(1, 1, 1));
        Geometry moved = box.translatedBy(new Vec3d(1, 0, 0));
        assertSame(Geometry.class, moved.getClass());
        assertEquals(2, moved.asMeshGeometry().getBoundingBox().getXMax());
        assertNull(moved.asPolylineGeometry());
    }

    @Test
    void textIsUtf8() {
        String before = Sdk.getFontsPath();
        for (String text : new String[] {"plain", "Übergang 出口 🚪", "zero \0 inside", "x".repeat(5000)}) {
            Sdk.setFontsPath(text);
            assertEquals(text, Sdk.getFontsPath());
        }
        Sdk.setFontsPath(before);
        IllegalArgumentException half =
                assertThrows(IllegalArgumentException.class, () -> Sdk.setFontsPath("half \uD83D pair"));
        assertEquals("path has half a surrogate pair at index 5", half.getMessage());
    }

    @Test
    void enumerationsAreReal() {
        assertSame(LogOutputLevel.WARNINGS, LogOutputLevel.fromValue(LogOutputLevel.WARNINGS.value()));
        Sdk.setOutputLevel(LogOutputLevel.NONE);
        Sdk.setOutputLevel(LogOutputLevel.WARNINGS);
        IllegalArgumentException unknown =
                assertThrows(IllegalArgumentException.class, () -> LogOutputLevel.fromValue(77));
        assertEquals("LogOutputLevel has no constant of the value 77", unknown.getMessage());
    }

    @Test
    void nullIsNamedBeforeNativeCodeIsReached() {
        Map<Executable, String> cases = new HashMap<>();
        cases.put(() -> new GlobalId((String) null), "text is null");
        cases.put(() -> Sdk.setOutputLevel(null), "level is null");
        cases.put(() -> MeshGeometry.create(null), "triangles is null");
        cases.put(() -> new GlobalId().compareTo(null), "other is null");
        // Whether an object may be absent is for the native library to say.
        cases.put(() -> Vec3d.ZERO.dot(null), "pedflux::Vec3d const & is null");
        cases.put(() -> new LineSeg3d().setStartPoint(null), "pedflux::Vec3d const & is null");
        cases.forEach((call, message) ->
                assertEquals(message, assertThrows(NullPointerException.class, call).getMessage()));
    }

    @Test
    void theSdksWordsReachTheProgram() {
        Exception refused = assertThrows(Exception.class, () -> new GlobalId("no identifier"));
        assertTrue(refused.getMessage().contains("no identifier"), refused.getMessage());
        assertThrows(Exception.class, () -> new Color(2, 0, 0));
        assertThrows(Exception.class, () -> new IdValuePair(GlobalId.INVALID, Double.NaN));
    }

    @Test
    void equalityFollowsTheSdk() {
        GlobalId first = new GlobalId(IDENTIFIER);
        GlobalId same = new GlobalId(IDENTIFIER.toUpperCase());
        GlobalId other = GlobalId.generate();
        assertNotSame(first, same);
        assertEquals(first, same);
        assertEquals(first.hashCode(), same.hashCode());
        assertEquals(0, first.compareTo(same));
        assertNotEquals(first, other);
        assertNotEquals(first, null);
        assertNotEquals(first, (Object) IDENTIFIER);
        assertEquals(Integer.signum(first.compareTo(other)), -Integer.signum(other.compareTo(first)));
        TreeSet<GlobalId> sorted = new TreeSet<>();
        for (GlobalId id : new GlobalId[] {first, other, same}) sorted.add(id);
        assertEquals(2, sorted.size());
        assertEquals(Color.RED, new Color(1, 0, 0));
    }

    @Test
    void constantsAreSharedAndCannotBeHarmed() {
        Vec3d.ZERO.delete();
        assertEquals(new Vec3d(), Vec3d.ZERO);
        assertEquals("a constant Vec3d cannot be changed; make a new one with its values",
                assertThrows(UnsupportedOperationException.class, () -> Vec3d.ZERO.setX(1)).getMessage());
        assertFalse(GlobalId.INVALID.isValid());
        assertEquals("Color(0.0, 0.0, 0.0, 0.0)", Color.CLEAR.toString());
    }

    @Test
    void aDeletedObjectIsRefusedEverywhere() {
        Vec3d vector = new Vec3d(1, 2, 3);
        MeshGeometry box = MeshGeometry.createBox(new Vec3d(0, 0, 0), new Vec3d(1, 1, 1));
        Tri3d triangle = new Tri3d();
        vector.delete();
        box.close();
        triangle.delete();
        Executable[] uses = {
            vector::getX,
            () -> new Vec3d().dot(vector),
            () -> vector.equals(new Vec3d()),
            vector::hashCode,
            box::getFaceCount,
            () -> ((Geometry) box).getBoundingSphere(),
            () -> MeshGeometry.create(new Tri3d[] {null, triangle}),
        };
        for (Executable use : uses) {
            String message = assertThrows(IllegalStateException.class, use).getMessage();
            assertTrue(message.matches("this (Vec3d|MeshGeometry|Tri3d) was deleted and cannot be used any more"), message);
        }
        assertEquals("Vec3d (deleted)", vector.toString());
        assertAll(vector::delete, vector::close, box::delete);
    }

    @Test
    void theExceptionIsAProxyToo() {
        Exception thrown = new Exception("made in Java");
        assertEquals("made in Java", thrown.getMessage());
        thrown.delete();
        Exception proxy = new Exception(pedfluxJNI.new_Exception("größer".getBytes(java.nio.charset.StandardCharsets.UTF_8)), true);
        assertEquals("größer", proxy.getMessage());
        proxy.delete();
        proxy.delete();
        assertEquals("größer", proxy.getMessage());
    }

    @Test
    void argumentsThatNativeTypesCannotHoldAreRefused() {
        assertEquals(0xFFFF_FFFFL, Arguments.natural(0xFFFF_FFFFL, "period"));
        assertEquals("period is -1; it must be from 0 to 4294967295",
                assertThrows(IllegalArgumentException.class, () -> Arguments.natural(-1, "period")).getMessage());
        assertEquals('\u00ff', Arguments.singleByte('\u00ff', "delimiter"));
        assertThrows(IllegalArgumentException.class, () -> Arguments.singleByte('\u0100', "delimiter"));
        assertEquals("names[1] is null",
                assertThrows(NullPointerException.class, () -> Arguments.texts(new String[] {"a", null}, "names"))
                        .getMessage());
        String[] names = {"a", "b"};
        assertArrayEquals(names, Arguments.texts(names, "names"));
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.lang.reflect.Field;
import java.nio.charset.StandardCharsets;
import org.junit.jupiter.api.Test;

/** The native methods themselves, as a program calls them that manages its handles on its own. */
class NativeMethodsTest {
    private static byte[] bytes(String text) {
        return text.getBytes(StandardCharsets.UTF_8);
    }

    private static long box() {
        long low = pedfluxJNI.new_Vec3d__SWIG_0();
        long high = pedfluxJNI.new_Vec3d__SWIG_1(1, 2, 3);
        long box = pedfluxJNI.MeshGeometry_createBox(low, null, high, null);
        pedfluxJNI.delete_Vec3d(low);
        pedfluxJNI.delete_Vec3d(high);
        return box;
    }

    @Test
    void theProxyOfAHandleIsNotUsed() {
        long vector = pedfluxJNI.new_Vec3d__SWIG_1(1, 2, 3);
        assertEquals(2, pedfluxJNI.Vec3d_getY(vector, null));
        pedfluxJNI.Vec3d_setY(vector, null, Double.NEGATIVE_INFINITY);
        assertEquals(Double.NEGATIVE_INFINITY, pedfluxJNI.Vec3d_getY(vector, null));
        pedfluxJNI.delete_Vec3d(vector);
    }

    @Test
    void zeroIsDeletedAndUpcastToNothing() {
        pedfluxJNI.delete_Vec3d(0);
        pedfluxJNI.delete_MeshGeometry(0);
        pedfluxJNI.delete_Exception(0);
        assertEquals(0, pedfluxJNI.MeshGeometry_SWIGSmartPtrUpcast(0));
    }

    @Test
    void anUpcastIsAHandleOfItsOwn() {
        long mesh = box();
        long geometry = pedfluxJNI.MeshGeometry_SWIGSmartPtrUpcast(mesh);
        assertNotEquals(mesh, geometry);
        pedfluxJNI.delete_MeshGeometry(mesh);
        long again = pedfluxJNI.Geometry_asMeshGeometry(geometry, null);
        assertEquals(12, pedfluxJNI.MeshGeometry_getFaceCount(again, null));
        pedfluxJNI.delete_MeshGeometry(again);
        assertEquals(0, pedfluxJNI.Geometry_asPolylineGeometry(geometry, null));
        pedfluxJNI.delete_Geometry(geometry);
    }

    @Test
    void aConstantIsOneObject() {
        assertEquals(pedfluxJNI.GlobalId_INVALID_get(), pedfluxJNI.GlobalId_INVALID_get());
        assertFalse(pedfluxJNI.GlobalId_isValid(pedfluxJNI.GlobalId_INVALID_get(), null));
    }

    @Test
    void bytesCrossAsTheyAre() {
        for (byte[] path : new byte[][] {{}, {0, 1, 0, (byte) 0xFF}, bytes("/fonts")}) {
            pedfluxJNI.Sdk_setFontsPath(bytes("before"));
            pedfluxJNI.Sdk_setFontsPath(path);
            assertArrayEquals(path, pedfluxJNI.Sdk_getFontsPath());
        }
    }

    @Test
    void failuresReturnNothing() {
        assertThrows(Exception.class, () -> pedfluxJNI.new_GlobalId__SWIG_1(bytes("not an identifier")));
        long vector = pedfluxJNI.new_Vec3d__SWIG_0();
        assertEquals("pedflux::Vec3d const & is null",
                assertThrows(NullPointerException.class, () -> pedfluxJNI.Vec3d_dot(vector, null, 0, null)).getMessage());
        pedfluxJNI.delete_Vec3d(vector);
        assertEquals("pedflux::MeshGeometry const & reference is null",
                assertThrows(NullPointerException.class, () -> pedfluxJNI.new_MeshGeometry__SWIG_2(0, null)).getMessage());
    }

    @Test
    void listsCarryOwningProxiesOfTheStaticClass() throws ReflectiveOperationException {
        long mesh = box();
        Vec3d[] vertices = pedfluxJNI.MeshGeometry_getVertices(mesh, null);
        assertEquals(8, vertices.length);
        for (Vec3d vertex : vertices) {
            assertSame(Vec3d.class, vertex.getClass());
            vertex.close();
            assertThrows(IllegalStateException.class, vertex::getX);
        }
        pedfluxJNI.delete_MeshGeometry(mesh);
    }

    @Test
    void everyLevelOfAProxyHasItsHandle() throws ReflectiveOperationException {
        try (MeshGeometry mesh = new MeshGeometry(box(), true)) {
            Field derived = MeshGeometry.class.getDeclaredField("swigCPtr");
            Field base = Geometry.class.getDeclaredField("swigCPtr");
            derived.setAccessible(true);
            base.setAccessible(true);
            assertNotEquals(0, derived.getLong(mesh));
            assertNotEquals(0, base.getLong(mesh));
            assertNotEquals(derived.getLong(mesh), base.getLong(mesh));
            mesh.delete();
            assertEquals(0, derived.getLong(mesh));
            assertEquals(0, base.getLong(mesh));
        }
    }

    @Test
    void aProxyThatDoesNotOwnLeavesTheHandleAlone() {
        long vector = pedfluxJNI.new_Vec3d__SWIG_1(4, 5, 6);
        Vec3d proxy = new Vec3d(vector, false);
        assertEquals(5, proxy.getY());
        proxy.delete();
        assertThrows(IllegalStateException.class, proxy::getY);
        assertEquals(5, pedfluxJNI.Vec3d_getY(vector, null));
        pedfluxJNI.delete_Vec3d(vector);
    }

    @Test
    void aHandleOfAnEmptyPointerIsNoObject() {
        assertNull(MeshGeometry.wrap(0));
        assertTrue(pedfluxJNI.Sdk_init());
        pedfluxJNI.Sdk_fini();
    }
}

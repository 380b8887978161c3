package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import org.junit.jupiter.api.Test;

/**
 * Null elements of lists. Each is reported where it stands, and the conversion goes on with the exception pending, as
 * programs expect; the virtual machine's checks warn of that, so these tests run apart from the others.
 */
class NullElementsTest {
    private final Vec3d first = new Vec3d(0, 0, 0);
    private final Vec3d last = new Vec3d(4, 0, 3);

    @Test
    void aNullElementIsReportedAfterTheCallWasMade() {
        // The SDK takes the zero point in the place of the missing ones.
        Vec3d[][] lists = {{last, null}, {null, last}, {last, null, first.plus(last), null}};
        for (Vec3d[] list : lists) {
            Exception thrown = assertThrows(Exception.class, () -> PolylineGeometry.create(list));
            assertEquals("Null element in Vec3d list", thrown.getMessage());
        }
    }

    @Test
    void whatTheSdkSaysOfTheDefaultElementComesLast() {
        Tri3d triangle = new Tri3d(first, last, new Vec3d(4, 0, 0));
        Exception thrown = assertThrows(Exception.class, () -> MeshGeometry.create(new Tri3d[] {triangle, null}));
        assertTrue(thrown.getMessage().contains("has no area"), thrown.getMessage());
    }
}

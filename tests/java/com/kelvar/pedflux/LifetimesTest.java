package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.util.concurrent.CyclicBarrier;
import java.util.concurrent.atomic.AtomicInteger;
import org.junit.jupiter.api.Test;

/** When handles are released: by the program, by a scope, by the collector, and only once. */
class LifetimesTest {
    private static final int MANY = 1_000;

    /** Makes proxies of values and of shared objects, with and without the handles of their bases. */
    private static Geometry[] makeSome() {
        Geometry[] made = new Geometry[3];
        made[0] = MeshGeometry.createBox(new Vec3d(0, 0, 0), new Vec3d(1, 1, 1));
        made[0].getGeometryTypeId();
        made[1] = PolylineGeometry.create(new Vec3d[] {new Vec3d(0, 0, 0), new Vec3d(1, 0, 0)});
        made[1].getBoundingBox().getCenter();
        made[2] = made[0].translatedBy(Vec3d.UP_DIRECTION);
        return made;
    }

    @Test
    void forgottenProxiesAreReleasedByTheCollector() throws InterruptedException {
        makeSome();
        Allocations before = Allocations.now();
        new Allocations(before.blocks(), before.bytes());
        for (int round = 0; round < MANY; ++round) makeSome();
        // The first rounds' objects are released too, so the heap may come back below the first count.
        Allocations empty = collected();
        for (int round = 0; round < MANY; ++round) makeSome();
        empty.awaitReturn("after " + MANY + " rounds of forgotten proxies");
    }

    /** What is on the heap when the collector has found all that it can. */
    private static Allocations collected() throws InterruptedException {
        Allocations last = null;
        for (int same = 0; same < 5; ) {
            System.gc();
            Thread.sleep(50);
            Allocations now = Allocations.now();
            same = now.equals(last) ? same + 1 : 0;
            last = now;
        }
        return last;
    }

    @Test
    void aProxyInUseKeepsItsHandleWhenItsNeighboursAreForgotten() throws InterruptedException {
        GlobalId[] kept = new GlobalId[10];
        String[] texts = new String[kept.length];
        for (int index = 0; index < MANY; ++index) {
            GlobalId id = GlobalId.generate();
            int place = index * kept.length / MANY;
            kept[place] = id;
            texts[place] = id.getString();
        }
        collected();
        for (int place = 0; place < kept.length; ++place) assertEquals(texts[place], kept[place].getString());
    }

    @Test
    void twoThreadsThatDeleteReleaseOnce() throws java.lang.Exception {
        Allocations before = collected();
        int threads = 2;
        CyclicBarrier start = new CyclicBarrier(threads);
        GlobalId[] shared = new GlobalId[MANY];
        for (int index = 0; index < MANY; ++index) shared[index] = GlobalId.generate();
        AtomicInteger failures = new AtomicInteger();
        Thread[] deleting = new Thread[threads];
        for (int thread = 0; thread < threads; ++thread) {
            deleting[thread] = new Thread(() -> {
                try {
                    start.await();
                    for (GlobalId id : shared) id.delete();
                } catch (java.lang.Exception failure) {
                    failures.incrementAndGet();
                }
            });
            deleting[thread].start();
        }
        for (Thread thread : deleting) thread.join();
        assertEquals(0, failures.get());
        assertEquals(before, Allocations.now());
        assertThrows(IllegalStateException.class, shared[0]::getString);
    }

    @Test
    void theObjectsOfAnEndedThreadAreReleased() throws InterruptedException {
        Thread warmUp = new Thread(LifetimesTest::makeSome);
        warmUp.start();
        warmUp.join();
        Allocations before = collected();
        Thread maker = new Thread(() -> {
            for (int round = 0; round < MANY; ++round) makeSome();
        });
        maker.start();
        maker.join();
        before.awaitReturn("after the thread's end");
    }

    @Test
    void aScopeReleasesWhatWasMadeInIt() {
        Vec3d outside = new Vec3d(1, 1, 1);
        Vec3d inside;
        Vec3d kept;
        Vec3d[] array;
        try (Scope scope = new Scope()) {
            inside = new Vec3d(2, 2, 2);
            kept = scope.keep(new Vec3d(3, 3, 3));
            array = MeshGeometry.createBox(Vec3d.ZERO, inside).getVertices();
            try (Scope inner = new Scope()) {
                assertSame(inside, inner.keep(inside));
            }
        }
        assertEquals(1, outside.getX());
        assertEquals(3, kept.getX());
        assertThrows(IllegalStateException.class, inside::getX);
        assertThrows(IllegalStateException.class, array[7]::getX);
    }

    @Test
    void whatAnInnerScopeKeepsBelongsToTheOuter() {
        Vec3d vector;
        try (Scope outer = new Scope()) {
            try (Scope inner = new Scope()) {
                vector = inner.keep(new Vec3d(1, 2, 3));
            }
            assertEquals(2, vector.getY());
        }
        assertThrows(IllegalStateException.class, vector::getY);
    }

    @Test
    void scopesCloseInTheirOrder() {
        Scope outer = new Scope();
        Scope inner = new Scope();
        assertThrows(IllegalStateException.class, outer::close);
        inner.close();
        inner.close();
        outer.close();
        outer.close();
    }
}

package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;

/** What the native libraries hold on the heap, counted by a library that the test run preloads. */
record Allocations(long blocks, long bytes) {
    static Allocations now() {
        return new Allocations(Heap.liveBlocks(), Heap.liveBytes());
    }

    Allocations plus(long moreBlocks, long moreBytes) {
        return new Allocations(blocks + moreBlocks, bytes + moreBytes);
    }

    /** Runs a loop, once to warm up and once measured, and tells what it left on the heap. */
    static Allocations leftBy(Runnable calls) {
        calls.run();
        Allocations before = now();
        calls.run();
        Allocations after = now();
        return new Allocations(after.blocks - before.blocks, after.bytes - before.bytes);
    }

    /** Waits until the collector has released everything above this level, for ten seconds at most. */
    void awaitReturn(String what) throws InterruptedException {
        for (int attempt = 0; attempt < 200 && Heap.liveBlocks() > blocks; ++attempt) {
            System.gc();
            Thread.sleep(50);
        }
        assertEquals(this, now(), what);
    }

    private static final class Heap {
        static {
            System.load(System.getProperty("pedflux.test.allocations"));
        }

        private Heap() {}

        static native long liveBlocks();

        static native long liveBytes();
    }
}

package com.kelvar.pedflux;

import java.lang.ref.PhantomReference;
import java.lang.ref.ReferenceQueue;

/** Releases the handles of forgotten proxies, on a thread of its own. */
final class Releaser extends Thread {
    private static final ReferenceQueue<Batch> UNREACHABLE = new ReferenceQueue<>();
    /** The head of the ring of all references; also the lock of the ring. */
    private static final Watch WATCHES = new Watch();

    static {
        Releaser releaser = new Releaser();
        releaser.start();
        Runtime.getRuntime().addShutdownHook(new Thread(releaser::finish, "pedflux-releaser-end"));
    }

    private Releaser() {
        super("pedflux-releaser");
        setDaemon(true);
    }

    /** From now on, what is left in the batch is released when no proxy refers to it any more. */
    static void watch(Batch batch) {
        Watch watch = new Watch(batch);
        synchronized (WATCHES) {
            watch.insertAfter(WATCHES);
        }
    }

    @Override
    public void run() {
        try {
            while (true) {
                Watch watch = (Watch) UNREACHABLE.remove();
                synchronized (WATCHES) {
                    watch.unlink();
                }
                watch.release();
            }
        } catch (InterruptedException ending) {
            // The virtual machine ends, and with it every handle.
        }
    }

    /** No handle may be released while the libraries' own objects are being destroyed. */
    private void finish() {
        interrupt();
        try {
            join();
        } catch (InterruptedException ending) {
            Thread.currentThread().interrupt();
        }
    }

    /** The reference to a batch, in a ring that keeps it reachable. */
    private static final class Watch extends PhantomReference<Batch> {
        private final int type;
        private final long[] handles;
        private Watch previous = this;
        private Watch next = this;

        Watch() {
            this(Batch.CONSTANTS);
        }

        Watch(Batch batch) {
            super(batch, UNREACHABLE);
            type = batch.type;
            handles = batch.handles;
        }

        void insertAfter(Watch watch) {
            previous = watch;
            next = watch.next;
            next.previous = this;
            watch.next = this;
        }

        void unlink() {
            previous.next = next;
            next.previous = previous;
        }

        void release() {
            for (long handle : handles) {
                if (handle != 0) ReleaseTable.release(type, handle);
            }
        }
    }
}

package com.kelvar.pedflux;

import java.lang.ref.WeakReference;

/** What one thread knows of the proxies that it makes: the batch that has room for the next one of each class. */
final class Lifetimes {
    /** Sharing a reference among so many proxies makes its cost vanish; more would only delay their release. */
    private static final int LARGEST_BATCH = 64;

    private static final ThreadLocal<Lifetimes> OF_THREAD = ThreadLocal.withInitial(Lifetimes::new);

    /** The innermost scope that is open on this thread, or null. */
    Scope scope;

    private final OpenBatch[] open = new OpenBatch[ReleaseTable.TYPES];

    static Lifetimes ofThread() {
        return OF_THREAD.get();
    }

    Batch batchWithRoom(int type) {
        OpenBatch current = open[type];
        if (current != null) {
            Batch batch = current.get();
            if (batch != null && batch.hasRoom()) return batch;
        }
        return nextBatch(type, current);
    }

    /**
     * A class of which a program makes few objects, such as a project, gets a batch for each of them, so that none waits
     * for another to be released. The more are made, the more share a batch.
     */
    private Batch nextBatch(int type, OpenBatch former) {
        int capacity = former == null ? 1 : Math.min(2 * former.capacity, LARGEST_BATCH);
        Batch batch = new Batch(type, capacity);
        Releaser.watch(batch);
        open[type] = new OpenBatch(batch, capacity);
        return batch;
    }

    /** Weak, so that a batch which is not full yet is released too when its last proxy is forgotten. */
    private static final class OpenBatch extends WeakReference<Batch> {
        final int capacity;

        OpenBatch(Batch batch, int capacity) {
            super(batch);
            this.capacity = capacity;
        }
    }
}

package com.kelvar.pedflux;

import java.lang.invoke.MethodHandles;
import java.lang.invoke.VarHandle;

/**
 * The handles of some proxies of one class that were made one after the other on one thread.
 *
 * <p>Each of these proxies refers to the batch. Hence one phantom reference, the batch's, tells that all of them are
 * unreachable, and a proxy costs the collector nothing. The price is that a forgotten handle is released only when the
 * other proxies of its batch are forgotten or deleted too; {@link Lifetimes} keeps batches small where that matters.
 *
 * <p>The collector's turn comes only when no proxy is left that could delete, so between both there is no race. Between
 * two threads that delete the same proxy, {@link #take} decides.
 */
final class Batch {
    /** Owns no handle: the batch of what cannot be deleted. */
    static final Batch CONSTANTS = new Batch(-1, 0);

    private static final VarHandle HANDLES = MethodHandles.arrayElementVarHandle(long[].class);

    final int type;
    final long[] handles;
    private final Thread thread = Thread.currentThread();
    private int used;

    Batch(int type, int capacity) {
        this.type = type;
        this.handles = new long[capacity];
    }

    boolean hasRoom() {
        return used < handles.length;
    }

    /** Only on the thread that made the batch, and only when it has room. */
    int add(long handle) {
        handles[used] = handle;
        return used++;
    }

    /** The handle, to the first who asks for it; 0 to all others. */
    long take(int slot) {
        long handle = (long) HANDLES.getAndSet(handles, slot, 0L);
        // What is made and closed in turn uses one slot over and over.
        if (handle != 0 && slot == used - 1 && thread == Thread.currentThread()) used = slot;
        return handle;
    }
}

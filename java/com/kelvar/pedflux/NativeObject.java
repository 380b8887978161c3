package com.kelvar.pedflux;

/**
 * What every proxy is: a native object, reached through its handle.
 *
 * <p>A proxy owns its handle, not the object behind it: releasing the handle of a floor leaves the floor in its project.
 * The handle is released by {@link #delete()} or {@link #close()}, by the {@link Scope} in which the proxy was made, or
 * some time after the garbage collector has found the proxy unreachable. A proxy that is used after its release throws
 * {@link IllegalStateException}.
 *
 * <p>Proxies may be released on any thread, also twice. Releasing a proxy while another thread uses it is a fault of the
 * program, like closing a file that another thread reads.
 */
public abstract class NativeObject implements AutoCloseable {
    /** Where the handle is kept for release; null when this proxy does not own it. */
    private Batch batch;
    private int slot;
    /** The handles to the same object as an object of its bases, as far as they were needed. */
    private BaseHandle baseHandles;

    NativeObject() {}

    /** Takes the ownership of the handle that a proxy was made with. */
    final void own(long handle, int type) {
        Lifetimes lifetimes = Lifetimes.ofThread();
        batch = lifetimes.batchWithRoom(type);
        slot = batch.add(handle);
        if (lifetimes.scope != null) lifetimes.scope.add(this);
    }

    /** Takes the ownership of a handle to this object as an object of a base. */
    final long ownBase(long handle, int type) {
        Batch owner = Lifetimes.ofThread().batchWithRoom(type);
        baseHandles = new BaseHandle(owner, owner.add(handle), baseHandles);
        return handle;
    }

    final void makeConstant() {
        batch = Batch.CONSTANTS;
    }

    /** Ends a call that would change an object which all programs share. */
    final void requireChangeable() {
        if (batch == Batch.CONSTANTS) {
            throw new UnsupportedOperationException(
                    "a constant " + className() + " cannot be changed; make a new one with its values");
        }
    }

    /** Releases the handle that this proxy was made with. Each class has its own, which the compiler can inline. */
    abstract void release(long handle);

    /** Sets the handle fields of all levels to 0. */
    abstract void forget();

    /**
     * Releases the handle. Does nothing when it was released before, and nothing to a constant such as {@code Vec3d.ZERO}.
     */
    public final void delete() {
        Batch owner = batch;
        if (owner == Batch.CONSTANTS) return;
        if (owner != null) {
            long handle = owner.take(slot);
            if (handle == 0) return;
            release(handle);
        }
        forget();
        for (BaseHandle base = baseHandles; base != null; base = base.next) base.release();
    }

    /** Releases the handle, as {@link #delete()} does. */
    @Override
    public void close() {
        delete();
    }

    final IllegalStateException deleted() {
        return new IllegalStateException("this " + className() + " was deleted and cannot be used any more");
    }

    private String className() {
        return getClass().getSimpleName();
    }

    /** A handle of a base's class that this object owns besides its own. */
    private record BaseHandle(Batch owner, int slot, BaseHandle next) {
        void release() {
            long handle = owner.take(slot);
            if (handle != 0) ReleaseTable.release(owner.type, handle);
        }
    }
}

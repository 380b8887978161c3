package com.kelvar.pedflux;

/**
 * What went wrong in the SDK, in its own words.
 *
 * <p>Unchecked: almost every operation may throw it, and what it reports is mostly a fault of the program or of its input
 * that no caller can mend on the spot.
 *
 * <p>The native library throws it with a message. It is also the proxy of the SDK's exception object, for programs that
 * hold a handle to one; the message is read when the proxy is made and outlives the native object.
 */
public class Exception extends RuntimeException implements AutoCloseable {
    private static final long serialVersionUID = 1;

    private transient long swigCPtr;
    private final transient Native object;

    /** An exception with a message and without a native object. */
    public Exception(String message) {
        super(message);
        object = null;
    }

    /**
     * The proxy of the exception behind a handle.
     *
     * @param owned whether deleting the proxy, or forgetting it, releases the handle
     */
    public Exception(long handle, boolean owned) {
        super(handle == 0 ? null : Arguments.text(pedfluxJNI.Exception_getMessage(handle, null)));
        swigCPtr = handle;
        object = new Native();
        if (owned && handle != 0) object.own(handle, ReleaseTable.EXCEPTION);
    }

    /** Releases the handle, if there is one. */
    public void delete() {
        if (object != null) object.delete();
    }

    /** Releases the handle, as {@link #delete()} does. */
    @Override
    public void close() {
        delete();
    }

    private final class Native extends NativeObject {
        @Override
        void release(long handle) {
            pedfluxJNI.delete_Exception(handle);
        }

        @Override
        void forget() {
            swigCPtr = 0;
        }
    }
}

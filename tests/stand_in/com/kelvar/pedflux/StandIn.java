package com.kelvar.pedflux;

/** What the library that stands in for the SDK tells of itself. Classes are named as in the SDK. */
final class StandIn {
    static {
        try {
            Class.forName(pedfluxJNI.class.getName());  // which loads the libraries
        } catch (ClassNotFoundException impossible) {
            throw new AssertionError(impossible);
        }
    }

    private StandIn() {}

    /** A new object, told from all others by what {@link #describe} says. */
    static native long make(String name);

    /** Another handle to the same object; for a value a copy. */
    static native long copy(String name, long handle);

    /** The object as records show it. */
    static native String describe(String name, long handle);

    /** The same of an object that crosses as such, and not by a shared pointer. */
    static native String content(String name, long handle);

    /** What records show where a list lacked an element. */
    static native String missing(String name);

    /** Whether a header defines the operation: it is part of the bridge then, and no stand-in can record it. */
    static native boolean isInlined(String operation);

    static native boolean isValue(String name);

    /** How many handles and others share the object. */
    static native long owners(String name, long handle);

    /** The operations reached since the last call: name, address of the object, arguments, and a result after "->". */
    static native String[][] records();

    /** The operation throws when it is reached the next time. */
    static native void fail(String operation, String message);
}

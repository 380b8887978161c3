package com.kelvar.elsewhere;

/**
 * Native code that does what the bridge must not do, and what it does in long loops. Each virtual machine complains in words
 * of its own, so a run of this tells whether the tests' harness still understands them.
 */
public final class Misuse {
    private Misuse() {}

    public static void main(String[] arguments) {
        System.load(arguments[0]);
        switch (arguments[1]) {
            case "exception" -> callWithExceptionPending();
            case "references" -> System.out.println(keepReferences(1000) + " references");
            default -> throw new IllegalArgumentException(arguments[1]);
        }
    }

    static native void callWithExceptionPending();

    /** Returns how many references it has made. */
    static native int keepReferences(int count);
}

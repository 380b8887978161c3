package com.kelvar.elsewhere;

import com.kelvar.pedflux.Vec3d;

/** A program that uses the package from outside. It prints a value that only the native libraries can compute. */
public final class Program {
    private Program() {}

    public static void main(String[] arguments) {
        System.out.println("length " + new Vec3d(3, 4, 0).getLength());
    }
}

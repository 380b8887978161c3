package com.kelvar.pedflux;

/** Marks the constructor that leaves a level without a handle: the object is of a derived class, which has one. */
enum Derived {
    OBJECT
}

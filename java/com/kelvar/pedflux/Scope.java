package com.kelvar.pedflux;

import java.util.ArrayList;
import java.util.List;

/**
 * Releases what was made in it: every proxy that this thread makes between opening and closing the scope.
 *
 * <pre>{@code
 * while (!simulation.isDone()) {
 *     try (Scope frame = new Scope()) {
 *         simulation.step();
 *         for (Agent agent : simulation.getAllAgents()) watch(agent.getPosition());
 *     }
 * }
 * }</pre>
 *
 * <p>Scopes nest. A scope is opened, used and closed by one thread.
 */
public final class Scope implements AutoCloseable {
    private final Lifetimes lifetimes = Lifetimes.ofThread();
    private final Scope outer = lifetimes.scope;
    private final List<NativeObject> made = new ArrayList<>();

    /** Opens a scope on this thread. */
    public Scope() {
        lifetimes.scope = this;
    }

    /**
     * Lets an object outlive this scope: it then belongs to the scope around this one, if there is one.
     *
     * @return the object
     */
    public <T extends NativeObject> T keep(T object) {
        for (int index = made.size() - 1; index >= 0; --index) {
            if (made.get(index) != object) continue;
            made.remove(index);
            if (outer != null) outer.add(object);
            break;
        }
        return object;
    }

    /**
     * Releases what was made in the scope and not kept, the youngest first.
     *
     * @throws IllegalStateException when an inner scope is still open, or on another thread
     */
    @Override
    public void close() {
        if (lifetimes.scope != this) {
            if (made.isEmpty() && !isOpen()) return;
            throw new IllegalStateException("a scope is closed by the thread that opened it, after the scopes in it");
        }
        lifetimes.scope = outer;
        for (int index = made.size() - 1; index >= 0; --index) made.get(index).delete();
        made.clear();
    }

    void add(NativeObject object) {
        made.add(object);
    }

    private boolean isOpen() {
        for (Scope scope = lifetimes.scope; scope != null; scope = scope.outer) {
            if (scope == this) return true;
        }
        return false;
    }
}

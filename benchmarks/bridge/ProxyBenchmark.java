import com.kelvar.pedflux.CountPopulationSource;
import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.PopulationArrival;
import com.kelvar.pedflux.Scope;
import com.kelvar.pedflux.SimObject;
import com.kelvar.pedflux.pedfluxJNI;
import com.sun.management.OperatingSystemMXBean;
import java.lang.management.ManagementFactory;

/**
 * What the proxies add to bare handles: closed one by one, left to the collector, or closed by a scope. A scope stands
 * beside bare handles that are released as late, since objects that are alive together cost the allocator more. What the
 * collector and the releasing thread do meanwhile shows in the time of all threads.
 */
final class ProxyBenchmark {
    private static final int SCOPE = 1000;
    private static final int FRAME = 10_000;

    private record Way(String name, Rounds.Loop loop) {}

    private ProxyBenchmark() {}

    static void run(Subjects subjects, int rounds) {
        System.out.printf("%n%-34s %12s %12s %12s %8s%n", "proxies (ns)", "median", "undisturbed", "all threads", "ratio");
        compare(rounds, sharedResult(subjects));
        compare(rounds, sharedResultsTogether(subjects));
        compare(rounds, valueResult(subjects));
        compare(rounds, valueResultsTogether(subjects));
        System.out.printf("%n%-34s %12s %12s %12s %8s%n", "frame of 10,000 objects (ns)", "median", "undisturbed", "all threads", "ratio");
        compare(rounds, frame());
        compare(rounds, frameTogether());
    }

    /** Each way beside the first one. */
    private static void compare(int rounds, Way... ways) {
        Rounds.Loop[] loops = new Rounds.Loop[ways.length];
        for (int index = 0; index < ways.length; ++index) loops[index] = ways[index].loop;
        double[][] times = Rounds.time(rounds, Integer.MAX_VALUE, loops);
        for (int index = 0; index < ways.length; ++index) {
            System.out.printf("%-34s %12.1f %12.1f %12.1f %8.2f%n", ways[index].name, Rounds.median(times[index]),
                    Rounds.undisturbed(times[index]), processorTime(ways[index].loop, Rounds.median(times[index])), Rounds.ratio(times[index], times[0]));
        }
    }

    /** Of all threads, the collector's too, over half a second. */
    private static double processorTime(Rounds.Loop loop, double nanoseconds) {
        var system = (OperatingSystemMXBean) ManagementFactory.getOperatingSystemMXBean();
        int calls = (int) Math.max(1, 5e8 / nanoseconds);
        System.gc();
        long start = system.getProcessCpuTime();
        Rounds.sink += loop.run(calls);
        return (double) (system.getProcessCpuTime() - start) / calls;
    }

    private static Way[] sharedResult(Subjects subjects) {
        long source = subjects.source;
        CountPopulationSource proxy = new CountPopulationSource();
        return new Way[] {
            new Way("shared result, bare handle", calls -> {
                for (int call = 0; call < calls; ++call) {
                    long arrival = pedfluxJNI.CountPopulationSource_getPopulationArrival(source, null);
                    pedfluxJNI.delete_PopulationArrival(arrival);
                }
                return calls;
            }),
            new Way("shared result, closed", calls -> {
                for (int call = 0; call < calls; ++call) {
                    try (PopulationArrival arrival = proxy.getPopulationArrival()) {
                        Rounds.sink += arrival.hashCode();
                    }
                }
                return calls;
            }),
            new Way("shared result, left", calls -> {
                for (int call = 0; call < calls; ++call) proxy.getPopulationArrival();
                return calls;
            }),
        };
    }

    private static Way[] sharedResultsTogether(Subjects subjects) {
        long source = subjects.source;
        CountPopulationSource proxy = new CountPopulationSource();
        long[] handles = new long[SCOPE];
        return new Way[] {
            new Way("1000 shared, bare handles", calls -> {
                for (int call = 0; call < calls; call += SCOPE) {
                    int made = Math.min(SCOPE, calls - call);
                    for (int index = 0; index < made; ++index) {
                        handles[index] = pedfluxJNI.CountPopulationSource_getPopulationArrival(source, null);
                    }
                    for (int index = made - 1; index >= 0; --index) pedfluxJNI.delete_PopulationArrival(handles[index]);
                }
                return calls;
            }),
            new Way("1000 shared, in a scope", calls -> {
                for (int call = 0; call < calls; call += SCOPE) {
                    try (Scope scope = new Scope()) {
                        for (int inner = call; inner < Math.min(call + SCOPE, calls); ++inner) proxy.getPopulationArrival();
                    }
                }
                return calls;
            }),
        };
    }

    private static Way[] valueResult(Subjects subjects) {
        long box = subjects.box;
        var proxy = new com.kelvar.pedflux.BoundingBox3d();
        return new Way[] {
            new Way("value result, bare handle", calls -> {
                for (int call = 0; call < calls; ++call) {
                    pedfluxJNI.delete_Vec3d(pedfluxJNI.BoundingBox3d_getCenter(box, null));
                }
                return calls;
            }),
            new Way("value result, closed", calls -> {
                for (int call = 0; call < calls; ++call) proxy.getCenter().close();
                return calls;
            }),
            new Way("value result, left", calls -> {
                for (int call = 0; call < calls; ++call) proxy.getCenter();
                return calls;
            }),
        };
    }

    private static Way[] valueResultsTogether(Subjects subjects) {
        long box = subjects.box;
        var proxy = new com.kelvar.pedflux.BoundingBox3d();
        long[] handles = new long[SCOPE];
        return new Way[] {
            new Way("1000 values, bare handles", calls -> {
                for (int call = 0; call < calls; call += SCOPE) {
                    int made = Math.min(SCOPE, calls - call);
                    for (int index = 0; index < made; ++index) handles[index] = pedfluxJNI.BoundingBox3d_getCenter(box, null);
                    for (int index = made - 1; index >= 0; --index) pedfluxJNI.delete_Vec3d(handles[index]);
                }
                return calls;
            }),
            new Way("1000 values, in a scope", calls -> {
                for (int call = 0; call < calls; call += SCOPE) {
                    try (Scope scope = new Scope()) {
                        for (int inner = call; inner < Math.min(call + SCOPE, calls); ++inner) proxy.getCenter();
                    }
                }
                return calls;
            }),
        };
    }

    /** Reads a list of objects and a value of each, as a program reads the agents of a frame. */
    private static Way[] frame() {
        long selection = Subjects.selection(FRAME);
        return new Way[] {
            new Way("bare handles", calls -> {
                for (int call = 0; call < calls; ++call) {
                    for (long object : Twins.selectedHandles(selection, null)) {
                        pedfluxJNI.delete_GlobalId(pedfluxJNI.SimObject_getId(object, null));
                        pedfluxJNI.delete_SimObject(object);
                    }
                }
                return calls;
            }),
            new Way("closed one by one", calls -> {
                for (int call = 0; call < calls; ++call) {
                    for (SimObject object : pedfluxJNI.Selection_getSelectedObjects(selection, null)) {
                        object.getId().close();
                        object.close();
                    }
                }
                return calls;
            }),
            new Way("left to the collector", calls -> {
                for (int call = 0; call < calls; ++call) {
                    for (SimObject object : pedfluxJNI.Selection_getSelectedObjects(selection, null)) object.getId();
                }
                return calls;
            }),
        };
    }

    private static Way[] frameTogether() {
        long selection = Subjects.selection(FRAME);
        long[] ids = new long[FRAME];
        return new Way[] {
            new Way("bare handles, until its end", calls -> {
                for (int call = 0; call < calls; ++call) {
                    long[] objects = Twins.selectedHandles(selection, null);
                    for (int index = 0; index < objects.length; ++index) ids[index] = pedfluxJNI.SimObject_getId(objects[index], null);
                    for (int index = objects.length - 1; index >= 0; --index) {
                        pedfluxJNI.delete_GlobalId(ids[index]);
                        pedfluxJNI.delete_SimObject(objects[index]);
                    }
                }
                return calls;
            }),
            new Way("in a scope", calls -> {
                for (int call = 0; call < calls; ++call) {
                    try (Scope scope = new Scope()) {
                        for (SimObject object : pedfluxJNI.Selection_getSelectedObjects(selection, null)) object.getId();
                    }
                }
                return calls;
            }),
        };
    }
}

import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.SimObject;
import com.kelvar.pedflux.pedfluxJNI;
import java.util.List;

/**
 * What a call of the bridge costs, beside a hand-written native method of the same shape that calls the same operation
 * of the SDK. Objects are passed as bare handles: the proxies are the other benchmark's subject.
 */
final class BridgeBenchmark {
    private static final double TARGET = 1.02;
    private static final int LIST = 1000;
    /** A string that comes in is kept for ever. */
    private static final int MOST_STRINGS_OF_A_ROUND = 500;

    /** One kind of call, through the bridge and through its twin. */
    private record Shape(String name, int mostCalls, Rounds.Loop bridge, Rounds.Loop twin) {
        Shape(String name, Rounds.Loop bridge, Rounds.Loop twin) {
            this(name, Integer.MAX_VALUE, bridge, twin);
        }
    }

    private BridgeBenchmark() {}

    static void run(Subjects subjects, int rounds) {
        System.out.printf("%-28s %20s %20s %8s%n", "", "median", "least disturbed", "");
        System.out.printf("%-28s %10s %9s %10s %9s %8s%n", "shape (ns a call)", "bridge", "twin", "bridge", "twin", "ratio");
        double[] floor = Rounds.time(rounds, Integer.MAX_VALUE, BridgeBenchmark::nothing)[0];
        System.out.printf("%-28s %20.1f %20.1f%n", "empty native method", Rounds.median(floor), Rounds.undisturbed(floor));
        for (Shape shape : shapes(subjects)) {
            double[][] times = Rounds.time(rounds, shape.mostCalls, shape.bridge, shape.twin);
            double ratio = Rounds.ratio(times[0], times[1]);
            System.out.printf("%-28s %10.1f %9.1f %10.1f %9.1f %8.3f%s%n", shape.name, Rounds.median(times[0]),
                    Rounds.median(times[1]), Rounds.undisturbed(times[0]), Rounds.undisturbed(times[1]), ratio,
                    ratio > TARGET ? "  above " + TARGET : "");
        }
    }

    private static List<Shape> shapes(Subjects subjects) {
        long vector = subjects.vector;
        long box = subjects.box;
        long exception = subjects.exception;
        long source = subjects.source;
        long distribution = Subjects.distribution(LIST);
        byte[] text = Subjects.TEXT;
        GlobalId[] ids = Subjects.identifiers(LIST);
        return List.of(
                new Shape("double getter",
                        calls -> {
                            double sum = 0;
                            for (int call = 0; call < calls; ++call) sum += pedfluxJNI.Vec3d_getX(vector, null);
                            return (long) sum;
                        },
                        calls -> {
                            double sum = 0;
                            for (int call = 0; call < calls; ++call) sum += Twins.getX(vector, null);
                            return (long) sum;
                        }),
                new Shape("double setter",
                        calls -> {
                            for (int call = 0; call < calls; ++call) pedfluxJNI.Vec3d_setX(vector, null, call);
                            return calls;
                        },
                        calls -> {
                            for (int call = 0; call < calls; ++call) Twins.setX(vector, null, call);
                            return calls;
                        }),
                new Shape("16-byte string out",
                        calls -> {
                            long sum = 0;
                            for (int call = 0; call < calls; ++call) {
                                sum += pedfluxJNI.Exception_getMessage(exception, null).length;
                            }
                            return sum;
                        },
                        calls -> {
                            long sum = 0;
                            for (int call = 0; call < calls; ++call) sum += Twins.getMessage(exception, null).length;
                            return sum;
                        }),
                new Shape("16-byte string in, delete", MOST_STRINGS_OF_A_ROUND,
                        calls -> {
                            for (int call = 0; call < calls; ++call) {
                                pedfluxJNI.delete_Exception(pedfluxJNI.new_Exception(text));
                            }
                            return calls;
                        },
                        calls -> {
                            for (int call = 0; call < calls; ++call) Twins.deleteException(Twins.newException(text));
                            return calls;
                        }),
                new Shape("shared result, delete",
                        calls -> {
                            for (int call = 0; call < calls; ++call) {
                                pedfluxJNI.delete_PopulationArrival(
                                        pedfluxJNI.CountPopulationSource_getPopulationArrival(source, null));
                            }
                            return calls;
                        },
                        calls -> {
                            for (int call = 0; call < calls; ++call) {
                                Twins.deletePopulationArrival(Twins.getPopulationArrival(source, null));
                            }
                            return calls;
                        }),
                new Shape("value result, delete",
                        calls -> {
                            for (int call = 0; call < calls; ++call) {
                                pedfluxJNI.delete_Vec3d(pedfluxJNI.BoundingBox3d_getCenter(box, null));
                            }
                            return calls;
                        },
                        calls -> {
                            for (int call = 0; call < calls; ++call) Twins.deleteVec3d(Twins.getCenter(box, null));
                            return calls;
                        }),
                new Shape("value argument",
                        calls -> {
                            double sum = 0;
                            for (int call = 0; call < calls; ++call) {
                                sum += pedfluxJNI.Vec3d_dot(vector, null, vector, null);
                            }
                            return (long) sum;
                        },
                        calls -> {
                            double sum = 0;
                            for (int call = 0; call < calls; ++call) sum += Twins.dot(vector, null, vector, null);
                            return (long) sum;
                        }),
                new Shape("double[1000] out",
                        calls -> {
                            long sum = 0;
                            for (int call = 0; call < calls; ++call) {
                                sum += pedfluxJNI.DiscreteDistribution_getValues(distribution, null).length;
                            }
                            return sum;
                        },
                        calls -> {
                            long sum = 0;
                            for (int call = 0; call < calls; ++call) {
                                sum += Twins.getValues(distribution, null).length;
                            }
                            return sum;
                        }),
                listOut("1000 shared proxies out", Subjects.selection(LIST)),
                listOut("1 shared proxy out", Subjects.selection(1)),
                new Shape("GlobalId[1000] in",
                        calls -> {
                            for (int call = 0; call < calls; ++call) {
                                pedfluxJNI.CountPopulationSource_setOrigins(source, null, ids);
                            }
                            return calls;
                        },
                        calls -> {
                            for (int call = 0; call < calls; ++call) Twins.setOrigins(source, null, ids);
                            return calls;
                        }));
    }

    /** The proxies are closed, so that what one loop leaves is not collected in the other's time. */
    private static Shape listOut(String name, long selection) {
        return new Shape(name,
                calls -> {
                    for (int call = 0; call < calls; ++call) {
                        for (SimObject object : pedfluxJNI.Selection_getSelectedObjects(selection, null)) object.close();
                    }
                    return calls;
                },
                calls -> {
                    for (int call = 0; call < calls; ++call) {
                        for (SimObject object : Twins.getSelectedObjects(selection, null)) object.close();
                    }
                    return calls;
                });
    }

    private static long nothing(int calls) {
        for (int call = 0; call < calls; ++call) Twins.nothing();
        return calls;
    }
}

import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.pedfluxJNI;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;

/** The objects that the benchmarks call: bare handles, alive as long as the program. */
final class Subjects {
    static final byte[] TEXT = "sixteen bytes it".getBytes(StandardCharsets.US_ASCII);

    final long vector = pedfluxJNI.new_Vec3d__SWIG_1(1, 2, 3);
    final long box = pedfluxJNI.new_BoundingBox3d__SWIG_1(vector, null, vector, null);
    final long exception = pedfluxJNI.new_Exception(TEXT);
    /** A CountPopulationSource. */
    final long source = pedfluxJNI.new_CountPopulationSource__SWIG_0();

    /** A DiscreteDistribution of so many values. */
    static long distribution(int count) {
        double[] values = new double[count];
        double[] weights = new double[count];
        Arrays.setAll(values, index -> index);
        Arrays.fill(weights, 1);
        return pedfluxJNI.new_DiscreteDistribution(values, weights);
    }

    static GlobalId[] identifiers(int count) {
        GlobalId[] all = new GlobalId[count];
        for (int index = 0; index < count; ++index) all[index] = GlobalId.generate();
        return all;
    }

    /** The Selection of a project in which so many objects are selected. */
    static long selection(int count) {
        long project = pedfluxJNI.Project_create();
        long selection = pedfluxJNI.Project_getSelection(project, null);
        for (int index = 0; index < count; ++index) {
            byte[] name = ("collection " + index).getBytes(StandardCharsets.US_ASCII);
            long collection = pedfluxJNI.Project_createCollection(project, null, name, new GlobalId[0]);
            pedfluxJNI.delete_Collection(collection);
        }
        GlobalId[] ids = new GlobalId[count];
        int index = 0;
        for (var object : pedfluxJNI.Project_getObjects(project, null)) ids[index++] = object.getId();
        pedfluxJNI.Selection_setObjects(selection, null, ids);
        return selection;
    }
}

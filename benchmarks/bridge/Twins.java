import com.kelvar.pedflux.BoundingBox3d;
import com.kelvar.pedflux.CountPopulationSource;
import com.kelvar.pedflux.DiscreteDistribution;
import com.kelvar.pedflux.GlobalId;
import com.kelvar.pedflux.Selection;
import com.kelvar.pedflux.SimObject;
import com.kelvar.pedflux.Vec3d;

/** The hand-written counterparts of some of the bridge's native methods. */
final class Twins {
    private Twins() {}

    static native void nothing();

    static native double getX(long handle, Vec3d proxy);

    static native void setX(long handle, Vec3d proxy, double x);

    static native byte[] getMessage(long handle, com.kelvar.pedflux.Exception proxy);

    static native long newException(byte[] message);

    static native void deleteException(long handle);

    static native long getPopulationArrival(long handle, CountPopulationSource proxy);

    static native void deletePopulationArrival(long handle);

    static native long getCenter(long handle, BoundingBox3d proxy);

    static native void deleteVec3d(long handle);

    static native double dot(long handle, Vec3d proxy, long other, Vec3d otherProxy);

    static native double[] getValues(long handle, DiscreteDistribution proxy);

    static native SimObject[] getSelectedObjects(long handle, Selection proxy);

    static native void setOrigins(long handle, CountPopulationSource proxy, GlobalId[] origins);

    static native long[] selectedHandles(long handle, Selection proxy);
}

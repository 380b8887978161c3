#include <pedflux/distributions.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/population_sources.h>
#include <pedflux/selection.h>
#include <pedflux/vectors.h>

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <jni.h>

// What the bridge does, written by hand for the few operations that the benchmark calls: the same handles, the same
// guard, the same JNI functions in the same order. Nothing is shared with the bridge but the SDK.

using pedflux::BoundingBox3d;
using pedflux::CountPopulationSource;
using pedflux::DiscreteDistribution;
using pedflux::GlobalId;
using pedflux::PopulationArrival;
using pedflux::Selection;
using pedflux::SimObject;
using pedflux::Vec3d;

#define TWIN(Result, name) extern "C" JNIEXPORT Result JNICALL Java_Twins_##name

namespace {

void raise(JNIEnv* env, pedflux::Exception const& exception) {
    jclass const java_class = env->FindClass("com/kelvar/pedflux/Exception");
    env->ThrowNew(java_class, exception.GetMessage().c_str());
}

void raise_null(JNIEnv* env, char const* message) {
    env->ExceptionClear();
    if (jclass const java_class = env->FindClass("java/lang/NullPointerException")) env->ThrowNew(java_class, message);
}

template <class T>
T* pointer(jlong handle) {
    return reinterpret_cast<T*>(handle);
}

template <class T>
T* shared_object(jlong handle) {
    return handle ? pointer<std::shared_ptr<T>>(handle)->get() : nullptr;
}

jlong handle_of(void const* pointer) { return reinterpret_cast<jlong>(pointer); }

}  // namespace

TWIN(void, nothing)(JNIEnv*, jclass) {}

TWIN(jdouble, getX)(JNIEnv* env, jclass, jlong handle, jobject) {
    try {
        return pointer<Vec3d>(handle)->GetX();
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return 0;
    }
}

TWIN(void, setX)(JNIEnv* env, jclass, jlong handle, jobject, jdouble x) {
    try {
        pointer<Vec3d>(handle)->SetX(x);
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
    }
}

TWIN(jbyteArray, getMessage)(JNIEnv* env, jclass, jlong handle, jobject) {
    try {
        std::string const message = pointer<pedflux::Exception>(handle)->GetMessage();
        auto const size = static_cast<jsize>(message.size());
        jbyteArray const array = env->NewByteArray(size);
        env->SetByteArrayRegion(array, 0, size, reinterpret_cast<jbyte const*>(message.data()));
        return array;
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return nullptr;
    }
}

TWIN(jlong, newException)(JNIEnv* env, jclass, jbyteArray array) {
    jbyte* const bytes = env->GetByteArrayElements(array, nullptr);
    jsize const size = env->GetArrayLength(array);
    auto const* const message = new std::string(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
    env->ReleaseByteArrayElements(array, bytes, JNI_ABORT);
    try {
        return handle_of(new (std::nothrow) pedflux::Exception(*message));
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return 0;
    }
}

TWIN(void, deleteException)(JNIEnv*, jclass, jlong handle) { delete pointer<pedflux::Exception>(handle); }

TWIN(jlong, getPopulationArrival)(JNIEnv* env, jclass, jlong handle, jobject) {
    auto* const source = shared_object<CountPopulationSource>(handle);
    try {
        std::shared_ptr<PopulationArrival> arrival = source->GetPopulationArrival();
        return arrival ? handle_of(new (std::nothrow) std::shared_ptr<PopulationArrival>(std::move(arrival))) : 0;
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return 0;
    }
}

TWIN(void, deletePopulationArrival)(JNIEnv*, jclass, jlong handle) {
    delete pointer<std::shared_ptr<PopulationArrival>>(handle);
}

TWIN(jlong, getCenter)(JNIEnv* env, jclass, jlong handle, jobject) {
    try {
        return handle_of(new (std::nothrow) Vec3d(pointer<BoundingBox3d>(handle)->GetCenter()));
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return 0;
    }
}

TWIN(void, deleteVec3d)(JNIEnv*, jclass, jlong handle) { delete pointer<Vec3d>(handle); }

TWIN(jdouble, dot)(JNIEnv* env, jclass, jlong handle, jobject, jlong other_handle, jobject) {
    auto const* const other = pointer<Vec3d>(other_handle);
    if (!other) {
        raise_null(env, "pedflux::Vec3d const & is null");
        return 0;
    }
    try {
        return pointer<Vec3d>(handle)->Dot(*other);
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return 0;
    }
}

TWIN(jdoubleArray, getValues)(JNIEnv* env, jclass, jlong handle, jobject) {
    auto* const distribution = shared_object<DiscreteDistribution>(handle);
    try {
        std::vector<double> const values = distribution->GetValues();
        auto const size = static_cast<jsize>(values.size());
        jdoubleArray const array = env->NewDoubleArray(size);
        env->SetDoubleArrayRegion(array, 0, size, values.data());
        return array;
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return nullptr;
    }
}

TWIN(jobjectArray, getSelectedObjects)(JNIEnv* env, jclass, jlong handle, jobject) {
    auto* const selection = shared_object<Selection>(handle);
    try {
        std::vector<std::shared_ptr<SimObject>> objects = selection->GetSelectedObjects();
        jclass const proxy_class = env->FindClass("com/kelvar/pedflux/SimObject");
        jmethodID const constructor = env->GetMethodID(proxy_class, "<init>", "(JZ)V");
        jobjectArray const array = env->NewObjectArray(static_cast<jsize>(objects.size()), proxy_class, nullptr);
        for (std::size_t index = 0; index < objects.size(); ++index) {
            auto* const holder = new (std::nothrow) std::shared_ptr<SimObject>(std::move(objects[index]));
            jobject const proxy = env->NewObject(proxy_class, constructor, handle_of(holder), JNI_TRUE);
            env->SetObjectArrayElement(array, static_cast<jsize>(index), proxy);
        }
        return array;
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
        return nullptr;
    }
}

TWIN(void, setOrigins)(JNIEnv* env, jclass, jlong handle, jobject, jobjectArray array) {
    auto* const source = shared_object<CountPopulationSource>(handle);
    jsize const size = env->GetArrayLength(array);
    std::vector<GlobalId> ids(static_cast<std::size_t>(size));
    jclass const proxy_class = env->FindClass("com/kelvar/pedflux/GlobalId");
    jfieldID const field = env->GetFieldID(proxy_class, "swigCPtr", "J");
    for (jsize index = 0; index < size; ++index) {
        if (jobject const proxy = env->GetObjectArrayElement(array, index)) {
            ids[static_cast<std::size_t>(index)] = *pointer<GlobalId>(env->GetLongField(proxy, field));
        } else {
            env->ThrowNew(env->FindClass("com/kelvar/pedflux/Exception"), "Null element in GlobalId list");
        }
    }
    try {
        source->SetOrigins(ids);
    } catch (pedflux::Exception const& exception) {
        raise(env, exception);
    }
}

/// No twin: what reading the selected objects would cost if they came as handles alone.
TWIN(jlongArray, selectedHandles)(JNIEnv* env, jclass, jlong handle, jobject) {
    std::vector<jlong> handles;
    for (auto& object : shared_object<Selection>(handle)->GetSelectedObjects()) {
        handles.push_back(handle_of(new std::shared_ptr<SimObject>(std::move(object))));
    }
    auto const size = static_cast<jsize>(handles.size());
    jlongArray const array = env->NewLongArray(size);
    env->SetLongArrayRegion(array, 0, size, handles.data());
    return array;
}

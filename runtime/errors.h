#pragma once

#include <pedflux/exception.h>

#include <jni.h>

/// The three ways in which a failure becomes a pending Java exception. Nothing here returns a value: the caller returns
/// its null result at once.
namespace pedflux::jni {

/// Codes of `throwJavaException`; each stands for one Java class. The bridge itself raises only `null_pointer`.
enum class ErrorCode : int {
    unknown = 0,
    out_of_memory = 1,
    input_output = 2,
    runtime = 3,
    index_out_of_bounds = 4,
    arithmetic = 5,
    illegal_argument = 6,
    null_pointer = 7,
    runtime_other = 8,  ///< the same class as `runtime`, on purpose
    unknown_error = 9,
    illegal_state = 10,
};

/// Clears what is pending and throws the Java class of `code` (of `unknown` for a code that the table does not have).
void throwJavaException(JNIEnv* env, ErrorCode code, char const* message);

/// Throws com.kelvar.pedflux.Exception. What is pending is not cleared first: a null element does not stop the
/// conversion, so several may come in a row.
void throw_sdk_exception(JNIEnv* env, char const* message);

/// The same for what the SDK threw. The guard of call.h catches nothing else: the SDK throws nothing else, and an
/// exhausted heap is not the bridge's to explain.
void throw_sdk_exception(JNIEnv* env, pedflux::Exception const& exception);

}  // namespace pedflux::jni

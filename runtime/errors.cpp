#include "runtime/errors.h"

namespace pedflux::jni {
namespace {

struct ErrorClass {
    ErrorCode code;
    char const* java_class;
};

// Searched in order; the last row serves every code that is not found.
constexpr ErrorClass error_classes[] = {
    {ErrorCode::out_of_memory, "java/lang/OutOfMemoryError"},
    {ErrorCode::input_output, "java/io/IOException"},
    {ErrorCode::runtime, "java/lang/RuntimeException"},
    {ErrorCode::index_out_of_bounds, "java/lang/IndexOutOfBoundsException"},
    {ErrorCode::arithmetic, "java/lang/ArithmeticException"},
    {ErrorCode::illegal_argument, "java/lang/IllegalArgumentException"},
    {ErrorCode::null_pointer, "java/lang/NullPointerException"},
    {ErrorCode::runtime_other, "java/lang/RuntimeException"},
    {ErrorCode::unknown_error, "java/lang/UnknownError"},
    {ErrorCode::illegal_state, "java/lang/IllegalStateException"},
    {ErrorCode::unknown, "java/lang/UnknownError"},
};

}  // namespace

void throwJavaException(JNIEnv* env, ErrorCode code, char const* message) {
    auto const* row = error_classes;
    while (row->code != code && row->code != ErrorCode::unknown) ++row;
    env->ExceptionClear();
    if (jclass const java_class = env->FindClass(row->java_class)) env->ThrowNew(java_class, message);
}

void throw_sdk_exception(JNIEnv* env, char const* message) {
    env->ThrowNew(env->FindClass("com/kelvar/pedflux/Exception"), message);
}

void throw_sdk_exception(JNIEnv* env, pedflux::Exception const& exception) {
    jclass const java_class = env->FindClass("com/kelvar/pedflux/Exception");
    env->ThrowNew(java_class, exception.GetMessage().c_str());
}

}  // namespace pedflux::jni

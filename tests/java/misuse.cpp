#include <jni.h>

/// See Misuse.java.

extern "C" JNIEXPORT void Java_com_kelvar_elsewhere_Misuse_callWithExceptionPending(JNIEnv* env, jclass) {
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), "pending");
    env->FindClass("java/lang/String");
    env->ExceptionClear();
}

extern "C" JNIEXPORT jint Java_com_kelvar_elsewhere_Misuse_keepReferences(JNIEnv* env, jclass, jint count) {
    jint made = 0;
    while (made < count && env->NewStringUTF("kept until the method returns")) ++made;
    return made;
}

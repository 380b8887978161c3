#include "tests/runtime/bridge_test.h"

/// Every way in which a call fails, alone and together with others.
namespace pedflux::jni::test {
namespace {

class FailureTest : public BridgeTest {
  protected:
    static Trace null_pointer(std::string const& message) {
        return {"ExceptionClear()", "FindClass(java/lang/NullPointerException)",
                "ThrowNew(java/lang/NullPointerException, " + message + ")"};
    }
    static Trace sdk_exception(std::string const& message) {
        return {"FindClass(com/kelvar/pedflux/Exception)", "ThrowNew(com/kelvar/pedflux/Exception, " + message + ")"};
    }
    /// A call that ends with a null argument before the SDK is reached.
    static Case null_argument(char const* name, std::function<void()> call, std::string const& message) {
        return {name, std::move(call), null_pointer(message), "java/lang/NullPointerException: " + message};
    }
};

TEST_F(FailureTest, EveryCodeHasItsJavaClass) {
    struct Code {
        int code;
        char const* java_class;
    };
    for (auto const& [code, java_class] : {Code{0, "java/lang/UnknownError"},
                                           {1, "java/lang/OutOfMemoryError"},
                                           {2, "java/io/IOException"},
                                           {3, "java/lang/RuntimeException"},
                                           {4, "java/lang/IndexOutOfBoundsException"},
                                           {5, "java/lang/ArithmeticException"},
                                           {6, "java/lang/IllegalArgumentException"},
                                           {7, "java/lang/NullPointerException"},
                                           {8, "java/lang/RuntimeException"},
                                           {9, "java/lang/UnknownError"},
                                           {10, "java/lang/IllegalStateException"},
                                           {11, "java/lang/UnknownError"},
                                           {-1, "java/lang/UnknownError"}}) {
        SCOPED_TRACE(code);
        auto const path = std::string(java_class);
        env.pending = "something earlier";
        throwJavaException(&env, static_cast<ErrorCode>(code), "why");
        EXPECT_EQ(take_trace(), (Trace{"ExceptionClear()", "FindClass(" + path + ")", "ThrowNew(" + path + ", why)"}));
        EXPECT_EQ(env.pending, path + ": why");
    }
}

TEST_F(FailureTest, AMissingClass) {
    env.missing_classes = {"java/lang/NullPointerException", "com/kelvar/pedflux/Exception"};
    Probe::failure = "closed";
    expect({
        {"of the code table: nothing is thrown",
         [&] { NATIVE(Probe_1takeLabel, probe, nullptr, 0, nullptr); },
         {"ExceptionClear()", "FindClass(java/lang/NullPointerException)"}},
        {"of the SDK's exception: thrown all the same",
         [&] { NATIVE(Probe_1doNothing, probe, nullptr); },
         {"SDK did nothing", "FindClass(com/kelvar/pedflux/Exception)", "ThrowNew(null, closed)"}},
    });
}

TEST_F(FailureTest, NullArgumentsAreNamedByTheirKind) {
    expect({
        null_argument(
            "value reference to const", [&] { NATIVE(Probe_1takeLabel, probe, nullptr, 0, nullptr); },
            "pedflux::Label const & is null"),
        null_argument(
            "value reference", [&] { NATIVE(Probe_1takeLabelReference, probe, nullptr, 0, nullptr); },
            "pedflux::Label & is null"),
        null_argument(
            "value by value", [&] { NATIVE(Probe_1takeLabelByValue, probe, nullptr, 0, nullptr); },
            "Attempt to dereference null pedflux::Label"),
        null_argument(
            "value declared const", [&] { NATIVE(Probe_1takeLabelConst, probe, nullptr, 0, nullptr); },
            "Attempt to dereference null pedflux::Label const"),
        null_argument(
            "copied value", [&] { EXPECT_EQ(NATIVE(new_1Spot_1_1SWIG_12, 0, nullptr), 0); },
            "pedflux::Spot const & is null"),
    });
    for (jlong const nothing : {jlong{0}, empty}) {
        SCOPED_TRACE(nothing ? "an empty holder" : "0");
        expect({
            null_argument(
                "shared reference", [&] { NATIVE(Probe_1takeDesk, probe, nullptr, nothing, nullptr); },
                "pedflux::Desk const & reference is null"),
            null_argument(
                "shared by value", [&] { NATIVE(Probe_1takeDeskByValue, probe, nullptr, nothing, nullptr); },
                "Attempt to dereference null pedflux::Desk"),
            null_argument(
                "shared declared const", [&] { NATIVE(Probe_1takeDeskConst, probe, nullptr, nothing, nullptr); },
                "Attempt to dereference null pedflux::Desk const"),
            null_argument(
                "copied shared", [&] { EXPECT_EQ(NATIVE(new_1Desk_1_1SWIG_11, nothing, nullptr), 0); },
                "pedflux::Desk const & reference is null"),
        });
    }
}

TEST_F(FailureTest, AnSdkFailureLeavesNothingButTheException) {
    Probe::failure = "the floor is closed";
    auto const failing = [&](char const* name, std::function<void()> call) {
        return Case{name, std::move(call), Trace{"SDK gave"} + sdk_exception("the floor is closed"),
                    "com/kelvar/pedflux/Exception: the floor is closed"};
    };
    expect({
        failing("boolean", [&] { EXPECT_EQ(NATIVE(Probe_1giveBoolean, probe, nullptr), JNI_FALSE); }),
        failing("int", [&] { EXPECT_EQ(NATIVE(Probe_1giveInt, probe, nullptr), 0); }),
        failing("float", [&] { EXPECT_EQ(NATIVE(Probe_1giveFloat, probe, nullptr), 0); }),
        failing("double", [&] { EXPECT_EQ(NATIVE(Probe_1giveDouble, probe, nullptr), 0); }),
        failing("unsigned", [&] { EXPECT_EQ(NATIVE(Probe_1giveUnsigned, probe, nullptr), 0); }),
        failing("enumeration", [&] { EXPECT_EQ(NATIVE(Probe_1giveMood, probe, nullptr), 0); }),
        failing("text", [&] { EXPECT_EQ(NATIVE(Probe_1giveText, probe, nullptr), nullptr); }),
        failing("texts", [&] { EXPECT_EQ(NATIVE(Probe_1giveTexts, probe, nullptr), nullptr); }),
        failing("ints", [&] { EXPECT_EQ(NATIVE(Probe_1giveInts, probe, nullptr), nullptr); }),
        failing("doubles", [&] { EXPECT_EQ(NATIVE(Probe_1giveDoubles, probe, nullptr), nullptr); }),
        failing("value", [&] { EXPECT_EQ(NATIVE(Probe_1giveLabel, probe, nullptr), 0); }),
        failing("shared", [&] { EXPECT_EQ(NATIVE(Probe_1giveShared, probe, nullptr), 0); }),
        failing("shared by value", [&] { EXPECT_EQ(NATIVE(Probe_1giveDesk, probe, nullptr), 0); }),
        failing("values", [&] { EXPECT_EQ(NATIVE(Probe_1giveLabels, probe, nullptr), nullptr); }),
        failing("shared list", [&] { EXPECT_EQ(NATIVE(Probe_1giveDesks, probe, nullptr), nullptr); }),
    });
}

TEST_F(FailureTest, OnlyTheSdksExceptionIsCaught) {
    Probe::out_of_memory = true;
    EXPECT_THROW(NATIVE(Probe_1takeLabels, probe, nullptr, env.proxies("Label", {label})), std::bad_alloc);
    EXPECT_EQ(env.pending, "");
}

TEST_F(FailureTest, ANullElementStopsNothing) {
    Trace const start{"GetArrayLength(Label[4])", "FindClass(com/kelvar/pedflux/Label)",
                      "GetFieldID(com/kelvar/pedflux/Label, swigCPtr, J)"};
    auto const element = [](std::string const& index) {
        return Trace{"GetObjectArrayElement(Label[4], " + index + ")",
                     "GetLongField(Label, com/kelvar/pedflux/Label.swigCPtrJ)"};
    };
    auto const null_element = [](std::string const& index) {
        return Trace{"GetObjectArrayElement(Label[4], " + index + ")"} + sdk_exception("Null element in Label list");
    };
    Trace const conversion = start + element("0") + null_element("1") + null_element("2") + element("3");
    auto const call = [&] {
        NATIVE(Probe_1takeLabels, probe, nullptr, env.proxies("Label", {label, std::nullopt, std::nullopt, label}));
    };
    expect({{"the SDK gets default elements", call,
             conversion + Trace{"SDK took [label exit, label default, label default, label exit]"},
             "com/kelvar/pedflux/Exception: Null element in Label list"}});

    Probe::failure = "no room";
    expect({{"the SDK fails after it", call,
             conversion + Trace{"SDK took [label exit, label default, label default, label exit]"} +
                 sdk_exception("no room"),
             "com/kelvar/pedflux/Exception: no room"}});
}

TEST_F(FailureTest, ANullSharedElementIsAnEmptyPointer) {
    jint sum = 0;
    expect({{"and the result comes with the exception pending",
             [&] {
                 sum = NATIVE(Probe_1add, 40, env.proxies("Desk", {std::nullopt, desk}), 2);
             },
             Trace{"GetArrayLength(Desk[2])", "FindClass(com/kelvar/pedflux/Desk)",
                   "GetFieldID(com/kelvar/pedflux/Desk, swigCPtr, J)", "GetObjectArrayElement(Desk[2], 0)"} +
                 sdk_exception("Null element in Desk list") +
                 Trace{"GetObjectArrayElement(Desk[2], 1)", "GetLongField(Desk, com/kelvar/pedflux/Desk.swigCPtrJ)",
                       "SDK added to [no desk, shared desk 4, users 2]"},
             "com/kelvar/pedflux/Exception: Null element in Desk list"}});
    EXPECT_EQ(sum, 42);
}

TEST_F(FailureTest, ArgumentsComeInOrderAndTheFirstFailingCheckEndsTheCall) {
    // Each step of Probe::Mix: what it does when it succeeds, and what it says when its handle is 0.
    Trace const labels{"GetArrayLength(Label[1])", "FindClass(com/kelvar/pedflux/Label)",
                       "GetFieldID(com/kelvar/pedflux/Label, swigCPtr, J)", "GetObjectArrayElement(Label[1], 0)"};
    Trace const null_label = labels + sdk_exception("Null element in Label list");
    Trace const text{"GetByteArrayElements(byte[3], NULL)", "GetArrayLength(byte[3])",
                     "ReleaseByteArrayElements(byte[3], JNI_ABORT)"};
    Trace const numbers{"GetIntArrayElements(int[2], NULL)", "GetArrayLength(int[2])",
                        "ReleaseIntArrayElements(int[2], JNI_ABORT)"};
    auto const mix = [&](jlong spot_given, jlong label_given, jlong desk_given) {
        return [&, spot_given, label_given, desk_given] {
            auto const result =
                NATIVE(Probe_1mix, probe, nullptr, env.proxies("Label", {std::nullopt}), env.bytes("way"), spot_given,
                       nullptr, label_given, nullptr, env.ints({1, 2}), desk_given, nullptr, JNI_TRUE);
            EXPECT_EQ(result != nullptr, spot_given && label_given && desk_given == desk);
        };
    };
    std::string const null_pointer_class = "java/lang/NullPointerException: ";
    expect({
        {"everything there: the null element stays pending", mix(spot, label, desk),
         null_label + text + numbers +
             Trace{"SDK mixed [label default], \"way\", spot 1.5 -2, label exit, [1, 2], desk 4, true",
                   "NewDoubleArray(2)", "SetDoubleArrayRegion(double[2], 0, 2)"},
         "com/kelvar/pedflux/Exception: Null element in Label list"},
        {"the first check clears what was pending", mix(0, 0, 0),
         null_label + text + null_pointer("pedflux::Spot const & is null"),
         null_pointer_class + "pedflux::Spot const & is null"},
        {"the second", mix(spot, 0, 0), null_label + text + null_pointer("Attempt to dereference null pedflux::Label"),
         null_pointer_class + "Attempt to dereference null pedflux::Label"},
        {"the third, after another conversion", mix(spot, label, empty),
         null_label + text + numbers + null_pointer("pedflux::Desk const & reference is null"),
         null_pointer_class + "pedflux::Desk const & reference is null"},
    });
}

TEST_F(FailureTest, AFunctionThatTheEnvironmentDoesNotModelIsNamed) {
    JNIEnv& plain = env;
    try {
        plain.DeleteLocalRef(nullptr);
        FAIL() << "DeleteLocalRef is not modelled";
    } catch (std::logic_error const& error) {
        EXPECT_STREQ(error.what(), "the bridge called the JNI function DeleteLocalRef");
    }
}

}  // namespace
}  // namespace pedflux::jni::test

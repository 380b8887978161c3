#include "tests/runtime/bridge_test.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <type_traits>

/// Every kind of argument: which JNI functions bring it in, in which order, and what the SDK gets.
namespace pedflux::jni::test {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

using ArgumentTest = BridgeTest;

/// The native method's parameters after the environment, the module class and the probe.
template <class... J>
using Native = void(JNIEnv*, jclass, jlong, jobject, J...);

template <class... J, class Deduced>
constexpr bool takes(Deduced) {
    return std::is_same_v<Deduced, Native<J...>*>;
}

static_assert(takes<jboolean>(&PEDFLUX_SYMBOL(Probe_1takeBoolean)));
static_assert(takes<jint>(&PEDFLUX_SYMBOL(Probe_1takeInt)));
static_assert(takes<jfloat>(&PEDFLUX_SYMBOL(Probe_1takeFloat)));
static_assert(takes<jdouble>(&PEDFLUX_SYMBOL(Probe_1takeDouble)));
static_assert(takes<jchar>(&PEDFLUX_SYMBOL(Probe_1takeChar)));
static_assert(takes<jlong>(&PEDFLUX_SYMBOL(Probe_1takeUnsigned)));
static_assert(takes<jint>(&PEDFLUX_SYMBOL(Probe_1takeMood)));
static_assert(takes<jbyteArray>(&PEDFLUX_SYMBOL(Probe_1takeText)));
static_assert(takes<jbyteArray>(&PEDFLUX_SYMBOL(Probe_1takeTextByValue)));
static_assert(takes<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1takeTexts)));
static_assert(takes<jintArray>(&PEDFLUX_SYMBOL(Probe_1takeInts)));
static_assert(takes<jdoubleArray>(&PEDFLUX_SYMBOL(Probe_1takeDoubles)));
static_assert(takes<jlong, jobject>(&PEDFLUX_SYMBOL(Probe_1takeLabelByValue)));
static_assert(takes<jlong, jobject>(&PEDFLUX_SYMBOL(Probe_1takeDesk)));
static_assert(takes<jlong, jobject>(&PEDFLUX_SYMBOL(Probe_1takeShared)));
static_assert(takes<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1takeLabels)));
static_assert(takes<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1takeDesks)));
static_assert(takes<>(&PEDFLUX_SYMBOL(Probe_1doNothing)));

TEST_F(ArgumentTest, NumbersNeedNoJniFunction) {
    constexpr jlong high_bits = 0x5'0000'0000;
    expect({
        {"true", [&] { NATIVE(Probe_1takeBoolean, probe, nullptr, JNI_TRUE); }, {"SDK took true"}},
        {"false", [&] { NATIVE(Probe_1takeBoolean, probe, nullptr, JNI_FALSE); }, {"SDK took false"}},
        {"negative int", [&] { NATIVE(Probe_1takeInt, probe, nullptr, -1); }, {"SDK took -1"}},
        {"least int",
         [&] { NATIVE(Probe_1takeInt, probe, nullptr, std::numeric_limits<jint>::min()); },
         {"SDK took -2147483648"}},
        {"float", [&] { NATIVE(Probe_1takeFloat, probe, nullptr, 0.25F); }, {"SDK took 0.25"}},
        {"double", [&] { NATIVE(Probe_1takeDouble, probe, nullptr, -2.5); }, {"SDK took -2.5"}},
        {"NaN passes", [&] { NATIVE(Probe_1takeDouble, probe, nullptr, std::nan("")); }, {"SDK took nan"}},
        {"char", [&] { NATIVE(Probe_1takeChar, probe, nullptr, u';'); }, {"SDK took ';'"}},
        {"a wide char loses its high byte", [&] { NATIVE(Probe_1takeChar, probe, nullptr, 0x2141); }, {"SDK took 'A'"}},
        {"unsigned", [&] { NATIVE(Probe_1takeUnsigned, probe, nullptr, 7); }, {"SDK took 7"}},
        {"unsigned -1", [&] { NATIVE(Probe_1takeUnsigned, probe, nullptr, -1); }, {"SDK took 4294967295"}},
        {"unsigned, high bits", [&] { NATIVE(Probe_1takeUnsigned, probe, nullptr, high_bits + 9); }, {"SDK took 9"}},
        {"enumeration", [&] { NATIVE(Probe_1takeMood, probe, nullptr, 7); }, {"SDK took mood 7"}},
        {"enumeration, unlisted value", [&] { NATIVE(Probe_1takeMood, probe, nullptr, -3); }, {"SDK took mood -3"}},
        {"no argument", [&] { NATIVE(Probe_1doNothing, probe, nullptr); }, {"SDK did nothing"}},
    });
}

/// A `byte[]`, `int[]` or `double[]` coming in; `array` is its name in the trace, "byte[3]".
Trace whole_array(std::string const& type, std::string const& array) {
    return {"Get" + type + "ArrayElements(" + array + ", NULL)", "GetArrayLength(" + array + ")",
            "Release" + type + "ArrayElements(" + array + ", JNI_ABORT)"};
}

TEST_F(ArgumentTest, PrimitiveArraysAreCopiedWhole) {
    auto const text = [&](auto const& bytes) {
        return [&, bytes] { NATIVE(Probe_1takeText, probe, nullptr, env.bytes(bytes)); };
    };
    expect({
        {"text", text("hall"sv), whole_array("Byte", "byte[4]") + Trace{"SDK took \"hall\""}},
        {"empty text", text(""sv), whole_array("Byte", "byte[0]") + Trace{"SDK took \"\""}},
        {"zero bytes", text("a\0b\0"sv), whole_array("Byte", "byte[4]") + Trace{"SDK took \"a\0b\0\""s}},
        {"no encoding", text("\xff\x80"sv), whole_array("Byte", "byte[2]") + Trace{"SDK took \"\xff\x80\""}},
        {"a null text is not noticed", [&] { NATIVE(Probe_1takeText, probe, nullptr, nullptr); },
         whole_array("Byte", "null") + Trace{"SDK took \"\""}},
        {"text by value", [&] { NATIVE(Probe_1takeTextByValue, probe, nullptr, env.bytes("hall")); },
         whole_array("Byte", "byte[4]") + Trace{"SDK took \"hall\""}},
        {"ints",
         [&] {
             NATIVE(Probe_1takeInts, probe, nullptr, env.ints({3, -1}));
         },
         whole_array("Int", "int[2]") + Trace{"SDK took [3, -1]"}},
        {"no ints", [&] { NATIVE(Probe_1takeInts, probe, nullptr, env.ints({})); },
         whole_array("Int", "int[0]") + Trace{"SDK took []"}},
        {"doubles",
         [&] {
             NATIVE(Probe_1takeDoubles, probe, nullptr, env.doubles({0.5, -1e9}));
         },
         whole_array("Double", "double[2]") + Trace{"SDK took [0.5, -1e+09]"}},
        {"a null double[] is not noticed", [&] { NATIVE(Probe_1takeDoubles, probe, nullptr, nullptr); },
         whole_array("Double", "null") + Trace{"SDK took []"}},
    });
}

TEST_F(ArgumentTest, StringsComeOneByOne) {
    expect({
        {"two strings",
         [&] {
             NATIVE(Probe_1takeTexts, probe, nullptr, env.strings({"arrival", ""}));
         },
         {"GetArrayLength(String[2])", "GetObjectArrayElement(String[2], 0)", "GetStringUTFChars(\"arrival\", NULL)",
          "ReleaseStringUTFChars(\"arrival\")", "GetObjectArrayElement(String[2], 1)", "GetStringUTFChars(\"\", NULL)",
          "ReleaseStringUTFChars(\"\")", "SDK took [\"arrival\", \"\"]"}},
        {"none",
         [&] { NATIVE(Probe_1takeTexts, probe, nullptr, env.strings({})); },
         {"GetArrayLength(String[0])", "SDK took []"}},
    });
}

TEST_F(ArgumentTest, ObjectsNeedNoJniFunction) {
    expect({
        {"value", [&] { NATIVE(Probe_1takeLabel, probe, nullptr, label, nullptr); }, {"SDK took label exit"}},
        {"value reference",
         [&] { NATIVE(Probe_1takeLabelReference, probe, nullptr, label, nullptr); },
         {"SDK took label exit"}},
        {"value by value",
         [&] { NATIVE(Probe_1takeLabelByValue, probe, nullptr, label, nullptr); },
         {"SDK took label exit"}},
        {"value declared const",
         [&] { NATIVE(Probe_1takeLabelConst, probe, nullptr, label, nullptr); },
         {"SDK took label exit"}},
        {"shared class", [&] { NATIVE(Probe_1takeDesk, probe, nullptr, desk, nullptr); }, {"SDK took desk 4"}},
        {"shared class by value",
         [&] { NATIVE(Probe_1takeDeskByValue, probe, nullptr, desk, nullptr); },
         {"SDK took desk 4"}},
        {"shared class declared const",
         [&] { NATIVE(Probe_1takeDeskConst, probe, nullptr, desk, nullptr); },
         {"SDK took desk 4"}},
        {"shared pointer is the caller's own",
         [&] { NATIVE(Probe_1takeShared, probe, nullptr, desk, nullptr); },
         {"SDK took shared desk 4, users 1"}},
        {"shared pointer by value is a second one",
         [&] { NATIVE(Probe_1takeSharedByValue, probe, nullptr, desk, nullptr); },
         {"SDK took shared desk 4, users 2"}},
        {"shared pointer, 0", [&] { NATIVE(Probe_1takeShared, probe, nullptr, 0, nullptr); }, {"SDK took no desk"}},
        {"shared pointer, empty",
         [&] { NATIVE(Probe_1takeShared, probe, nullptr, empty, nullptr); },
         {"SDK took no desk"}},
        {"shared pointer by value, 0",
         [&] { NATIVE(Probe_1takeSharedByValue, probe, nullptr, 0, nullptr); },
         {"SDK took no desk"}},
        {"shared pointer by reference, 0",
         [&] { NATIVE(Probe_1replace, probe, nullptr, 0, nullptr); },
         {"SDK replaced no desk"}},
    });
    EXPECT_EQ(desk_object.use_count(), 1);
}

TEST_F(ArgumentTest, ByValueIsOneCopyAndReferenceNone) {
    struct Copies {
        char const* name;
        std::function<void()> call;
        int labels;
        int desks;
    };
    for (auto const& [name, call, labels, desks] : std::vector<Copies>{
             {"value", [&] { NATIVE(Probe_1takeLabel, probe, nullptr, label, nullptr); }, 0, 0},
             {"value reference", [&] { NATIVE(Probe_1takeLabelReference, probe, nullptr, label, nullptr); }, 0, 0},
             {"value by value", [&] { NATIVE(Probe_1takeLabelByValue, probe, nullptr, label, nullptr); }, 1, 0},
             {"value declared const", [&] { NATIVE(Probe_1takeLabelConst, probe, nullptr, label, nullptr); }, 1, 0},
             {"shared class", [&] { NATIVE(Probe_1takeDesk, probe, nullptr, desk, nullptr); }, 0, 0},
             {"shared class by value", [&] { NATIVE(Probe_1takeDeskByValue, probe, nullptr, desk, nullptr); }, 0, 1},
             {"shared pointer", [&] { NATIVE(Probe_1takeSharedByValue, probe, nullptr, desk, nullptr); }, 0, 0},
         }) {
        SCOPED_TRACE(name);
        int const labels_before = Label::count.copied;
        int const desks_before = Desk::count.copied;
        call();
        EXPECT_EQ(Label::count.copied - labels_before, labels);
        EXPECT_EQ(Desk::count.copied - desks_before, desks);
    }
}

TEST_F(ArgumentTest, AReferenceIsTheCallersOwnObject) {
    Spot moved(1, 2);
    NATIVE(Probe_1move, probe, nullptr, to_handle(&moved), nullptr);
    EXPECT_EQ(moved.GetX(), 2);

    NATIVE(Probe_1replace, probe, nullptr, desk, nullptr);
    EXPECT_EQ(desk_object->GetSeats(), 99);
}

/// The start of an object array's conversion.
Trace lookup(std::string const& type, std::string const& array) {
    return {"GetArrayLength(" + array + ")", "FindClass(com/kelvar/pedflux/" + type + ")",
            "GetFieldID(com/kelvar/pedflux/" + type + ", swigCPtr, J)"};
}

TEST_F(ArgumentTest, ObjectsOfAListComeOneByOne) {
    expect({
        {"values",
         [&] {
             NATIVE(Probe_1takeLabels, probe, nullptr, env.proxies("Label", {label, label}));
         },
         lookup("Label", "Label[2]") +
             Trace{"GetObjectArrayElement(Label[2], 0)", "GetLongField(Label, com/kelvar/pedflux/Label.swigCPtrJ)",
                   "GetObjectArrayElement(Label[2], 1)", "GetLongField(Label, com/kelvar/pedflux/Label.swigCPtrJ)",
                   "SDK took [label exit, label exit]"}},
        {"no values: the look-ups stay", [&] { NATIVE(Probe_1takeLabels, probe, nullptr, env.proxies("Label", {})); },
         lookup("Label", "Label[0]") + Trace{"SDK took []"}},
        {"shared: the vector shares ownership, an empty holder gives an empty pointer",
         [&] {
             NATIVE(Probe_1takeDesks, probe, nullptr, env.proxies("Desk", {desk, empty}));
         },
         lookup("Desk", "Desk[2]") +
             Trace{"GetObjectArrayElement(Desk[2], 0)", "GetLongField(Desk, com/kelvar/pedflux/Desk.swigCPtrJ)",
                   "GetObjectArrayElement(Desk[2], 1)", "GetLongField(Desk, com/kelvar/pedflux/Desk.swigCPtrJ)",
                   "SDK took [shared desk 4, users 2, no desk]"}},
    });
    EXPECT_EQ(desk_object.use_count(), 1);
}

}  // namespace
}  // namespace pedflux::jni::test

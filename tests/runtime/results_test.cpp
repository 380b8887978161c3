#include "tests/runtime/bridge_test.h"

#include <type_traits>

/// Every kind of result: what Java gets and which JNI functions make it.
namespace pedflux::jni::test {
namespace {

using namespace std::string_literals;

class ResultTest : public BridgeTest {
  protected:
    /// What a native method returns, after checking how it was made.
    template <class Call>
    auto expect_result(Trace const& trace, Call call) {
        take_trace();
        auto const result = call();
        EXPECT_EQ(take_trace(), trace);
        EXPECT_EQ(env.pending, "");
        return result;
    }

    /// The proxies of a result, whose handles Java owns.
    static std::vector<jlong> handles(jobjectArray array) {
        std::vector<jlong> all;
        for (auto const* proxy : object(array).elements) all.push_back(proxy->handle);
        return all;
    }
};

template <class J, class Deduced>
constexpr bool gives(Deduced) {
    return std::is_same_v<Deduced, J (*)(JNIEnv*, jclass, jlong, jobject)>;
}

static_assert(gives<void>(&PEDFLUX_SYMBOL(Probe_1doNothing)));
static_assert(gives<jboolean>(&PEDFLUX_SYMBOL(Probe_1giveBoolean)));
static_assert(gives<jint>(&PEDFLUX_SYMBOL(Probe_1giveInt)));
static_assert(gives<jfloat>(&PEDFLUX_SYMBOL(Probe_1giveFloat)));
static_assert(gives<jdouble>(&PEDFLUX_SYMBOL(Probe_1giveDouble)));
static_assert(gives<jlong>(&PEDFLUX_SYMBOL(Probe_1giveUnsigned)));
static_assert(gives<jint>(&PEDFLUX_SYMBOL(Probe_1giveMood)));
static_assert(gives<jbyteArray>(&PEDFLUX_SYMBOL(Probe_1giveText)));
static_assert(gives<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1giveTexts)));
static_assert(gives<jintArray>(&PEDFLUX_SYMBOL(Probe_1giveInts)));
static_assert(gives<jdoubleArray>(&PEDFLUX_SYMBOL(Probe_1giveDoubles)));
static_assert(gives<jlong>(&PEDFLUX_SYMBOL(Probe_1giveLabel)));
static_assert(gives<jlong>(&PEDFLUX_SYMBOL(Probe_1giveShared)));
static_assert(gives<jlong>(&PEDFLUX_SYMBOL(Probe_1giveDesk)));
static_assert(gives<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1giveLabels)));
static_assert(gives<jobjectArray>(&PEDFLUX_SYMBOL(Probe_1giveDesks)));

TEST_F(ResultTest, NumbersNeedNoJniFunction) {
    Trace const gave{"SDK gave"};
    for (bool const flag : {true, false}) {
        Probe::gift<bool> = flag;
        EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveBoolean, probe, nullptr); }), flag ? 1 : 0);
    }
    Probe::gift<int> = -1;
    EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveInt, probe, nullptr); }), -1);
    Probe::gift<float> = 0.25F;
    EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveFloat, probe, nullptr); }), 0.25F);
    Probe::gift<double> = -2.5;
    EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveDouble, probe, nullptr); }), -2.5);
    Probe::gift<unsigned int> = 0xFFFF'FFFF;
    EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveUnsigned, probe, nullptr); }), 0xFFFF'FFFFLL);
    Probe::gift<Mood> = Mood::BUSY;
    EXPECT_EQ(expect_result(gave, [&] { return NATIVE(Probe_1giveMood, probe, nullptr); }), 7);
}

TEST_F(ResultTest, PrimitiveArraysAreFilledWhole) {
    for (auto const& text : {"hall"s, ""s, "a\0\xff"s}) {
        Probe::gift<std::string> = text;
        auto const size = std::to_string(text.size());
        auto const array = expect_result(
            {"SDK gave", "NewByteArray(" + size + ")", "SetByteArrayRegion(byte[" + size + "], 0, " + size + ")"},
            [&] { return NATIVE(Probe_1giveText, probe, nullptr); });
        EXPECT_EQ(std::string(object(array).bytes.begin(), object(array).bytes.end()), text);
    }
    for (auto const& numbers : {std::vector{3, -1}, std::vector<int>{}}) {
        Probe::gift<std::vector<int>> = numbers;
        auto const size = std::to_string(numbers.size());
        auto const array = expect_result(
            {"SDK gave", "NewIntArray(" + size + ")", "SetIntArrayRegion(int[" + size + "], 0, " + size + ")"},
            [&] { return NATIVE(Probe_1giveInts, probe, nullptr); });
        EXPECT_EQ(object(array).ints, numbers);
    }
    for (auto const& numbers : {std::vector{0.5, -1e9}, std::vector<double>{}}) {
        Probe::gift<std::vector<double>> = numbers;
        auto const size = std::to_string(numbers.size());
        auto const array = expect_result(
            {"SDK gave", "NewDoubleArray(" + size + ")", "SetDoubleArrayRegion(double[" + size + "], 0, " + size + ")"},
            [&] { return NATIVE(Probe_1giveDoubles, probe, nullptr); });
        EXPECT_EQ(object(array).doubles, numbers);
    }
}

TEST_F(ResultTest, StringsGoOneByOne) {
    Trace const start{"SDK gave", "NewStringUTF()", "FindClass(java/lang/String)"};
    Probe::gift<std::vector<std::string>> = {"arrival", ""};
    auto const array = expect_result(start + Trace{"NewObjectArray(2, java/lang/String, \"\")", "NewStringUTF(arrival)",
                                                   "SetObjectArrayElement(String[2], 0, \"arrival\")", "NewStringUTF()",
                                                   "SetObjectArrayElement(String[2], 1, \"\")"},
                                     [&] { return NATIVE(Probe_1giveTexts, probe, nullptr); });
    EXPECT_EQ(object(array).elements[0]->text, "arrival");

    Probe::gift<std::vector<std::string>> = {};
    expect_result(start + Trace{"NewObjectArray(0, java/lang/String, \"\")"},
                  [&] { return NATIVE(Probe_1giveTexts, probe, nullptr); });
}

TEST_F(ResultTest, ValuesBecomeNewHandlesWithoutAnExtraCopy) {
    Probe::gift<Spot> = {1.5, -2};
    auto const spot_result = expect_result({"SDK gave"}, [&] { return NATIVE(Probe_1giveSpot, probe, nullptr); });
    EXPECT_EQ(from_handle<Spot>(spot_result)->GetZ(), -2);
    NATIVE(delete_1Spot, spot_result);

    int const copied = Label::count.copied;  // the SDK's own copy is the only one
    auto const label_result = expect_result({"SDK gave"}, [&] { return NATIVE(Probe_1giveLabel, probe, nullptr); });
    EXPECT_EQ(Label::count.copied - copied, 1);
    EXPECT_EQ(from_handle<Label>(label_result)->GetText(), "default");
    NATIVE(delete_1Label, label_result);
}

TEST_F(ResultTest, SharedResultsHoldOneReference) {
    auto& gift = Probe::gift<std::shared_ptr<Desk>>;
    gift = desk_object;
    auto const handle = expect_result({"SDK gave"}, [&] { return NATIVE(Probe_1giveShared, probe, nullptr); });
    EXPECT_EQ(object_of<Desk>(handle), desk_object.get());
    EXPECT_EQ(desk_object.use_count(), 3);
    NATIVE(delete_1Desk, handle);
    EXPECT_EQ(desk_object.use_count(), 2);

    gift = nullptr;
    EXPECT_EQ(expect_result({"SDK gave"}, [&] { return NATIVE(Probe_1giveShared, probe, nullptr); }), 0);
}

/// The start of an object array's result.
Trace start_of_array(std::string const& type, std::string const& size) {
    auto const path = "com/kelvar/pedflux/" + type;
    return {"SDK gave", "FindClass(" + path + ")", "GetMethodID(" + path + ", <init>, (JZ)V)",
            "NewObjectArray(" + size + ", " + path + ", null)"};
}

std::string new_proxy(std::string const& type) {
    auto const path = "com/kelvar/pedflux/" + type;
    return "NewObject(" + path + ", " + path + ".<init>(JZ)V, handle, true)";
}

TEST_F(ResultTest, ListsOfValuesBecomeOwningProxies) {
    auto& gift = Probe::gift<std::vector<Label>>;
    gift.clear();
    expect_result(start_of_array("Label", "0"), [&] { return NATIVE(Probe_1giveLabels, probe, nullptr); });

    gift.reserve(2);
    gift.emplace_back("door");
    gift.emplace_back("gate");
    int const copied = Label::count.copied;
    auto const array = expect_result(
        start_of_array("Label", "2") + Trace{new_proxy("Label"), "SetObjectArrayElement(Label[2], 0, Label)",
                                             new_proxy("Label"), "SetObjectArrayElement(Label[2], 1, Label)"},
        [&] { return NATIVE(Probe_1giveLabels, probe, nullptr); });
    EXPECT_EQ(Label::count.copied - copied, 2) << "the SDK copies its list once; the bridge moves out of it";
    auto const elements = handles(array);
    EXPECT_EQ(from_handle<Label>(elements[0])->GetText(), "door");
    EXPECT_EQ(from_handle<Label>(elements[1])->GetText(), "gate");
    for (auto const handle : elements) NATIVE(delete_1Label, handle);
    gift.clear();
}

TEST_F(ResultTest, AnEmptySharedElementGetsAHolderToo) {
    auto& gift = Probe::gift<std::vector<std::shared_ptr<Desk>>>;
    gift = {desk_object, nullptr, desk_object};
    auto const array =
        expect_result(start_of_array("Desk", "3") + Trace{new_proxy("Desk"), "SetObjectArrayElement(Desk[3], 0, Desk)",
                                                          new_proxy("Desk"), "SetObjectArrayElement(Desk[3], 1, Desk)",
                                                          new_proxy("Desk"), "SetObjectArrayElement(Desk[3], 2, Desk)"},
                      [&] { return NATIVE(Probe_1giveDesks, probe, nullptr); });
    gift.clear();
    EXPECT_EQ(desk_object.use_count(), 3);
    auto const elements = handles(array);
    EXPECT_NE(elements[0], elements[2]) << "one holder for each proxy, also of the same object";
    EXPECT_EQ(object_of<Desk>(elements[1]), nullptr);
    for (auto const handle : elements) NATIVE(delete_1Desk, handle);
    EXPECT_EQ(desk_object.use_count(), 1);
}

}  // namespace
}  // namespace pedflux::jni::test

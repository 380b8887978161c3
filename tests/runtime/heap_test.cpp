#include "tests/runtime/bridge_test.h"

#include <cstddef>

/// What stays on the heap after a call: nothing but the buffers that are kept on purpose, to the byte.
namespace pedflux::jni::test {
namespace {

using namespace std::string_literals;

class HeapTest : public BridgeTest {
  protected:
    struct Cost {
        char const* name;
        std::function<void()> call;
        Live kept = {};
    };

    void expect_cost(std::vector<Cost> const& costs) {
        int const labels_before = Label::count.alive;
        int const desks_before = Desk::count.alive;
        for (auto const& [name, call, kept] : costs) {
            SCOPED_TRACE(name);
            EXPECT_EQ(left_by(call), kept);
            EXPECT_EQ(Label::count.alive, labels_before);
            EXPECT_EQ(Desk::count.alive, desks_before);
            EXPECT_EQ(desk_object.use_count(), 1);
        }
    }

    void delete_labels(jobjectArray array) {
        for (auto const* proxy : object(array).elements) NATIVE(delete_1Label, proxy->handle);
    }

    std::string const long_text = std::string(100, 'x');
    std::vector<std::string> const texts{"short", std::string(60, 'y')};
    jbyteArray const bytes = env.bytes(long_text);
    jobjectArray const strings = env.strings(texts);
    jintArray const ints = env.ints({1, 2, 3});
    jdoubleArray const doubles = env.doubles({1, 2});
    jobjectArray const labels = env.proxies("Label", {label, std::nullopt, label});
    jobjectArray const desks = env.proxies("Desk", {desk, std::nullopt, empty});
    Live const kept_text = size_of_new(long_text);
    Live const kept_ints = size_of_new(std::vector<int>{1, 2, 3});
};

TEST_F(HeapTest, ArgumentsLeaveOnlyTheBuffersThatAreKept) {
    for (bool const failing : {false, true}) {
        SCOPED_TRACE(failing ? "the SDK fails" : "the SDK succeeds");
        if (failing) Probe::failure = long_text;
        expect_cost({
            {"number", [&] { NATIVE(Probe_1takeInt, probe, nullptr, 1); }},
            {"text", [&] { NATIVE(Probe_1takeText, probe, nullptr, bytes); }, kept_text},
            {"empty text", [&] { NATIVE(Probe_1takeText, probe, nullptr, env.bytes("")); }, size_of_new(""s)},
            {"text by value", [&] { NATIVE(Probe_1takeTextByValue, probe, nullptr, bytes); }, kept_text},
            {"texts", [&] { NATIVE(Probe_1takeTexts, probe, nullptr, strings); }, size_of_new(texts)},
            {"ints", [&] { NATIVE(Probe_1takeInts, probe, nullptr, ints); }, kept_ints},
            {"doubles", [&] { NATIVE(Probe_1takeDoubles, probe, nullptr, doubles); },
             size_of_new(std::vector<double>{1, 2})},
            {"value", [&] { NATIVE(Probe_1takeLabel, probe, nullptr, label, nullptr); }},
            {"value by value", [&] { NATIVE(Probe_1takeLabelByValue, probe, nullptr, label, nullptr); }},
            {"shared by value", [&] { NATIVE(Probe_1takeDeskByValue, probe, nullptr, desk, nullptr); }},
            {"shared pointer by value", [&] { NATIVE(Probe_1takeSharedByValue, probe, nullptr, desk, nullptr); }},
            {"values", [&] { NATIVE(Probe_1takeLabels, probe, nullptr, labels); }},
            {"shared list", [&] { NATIVE(Probe_1takeDesks, probe, nullptr, desks); }},
            {"no values", [&] { NATIVE(Probe_1takeLabels, probe, nullptr, env.proxies("Label", {})); }},
        });
    }
}

TEST_F(HeapTest, AFailingCheckReleasesTheVectorsAndKeepsTheBuffersBeforeIt) {
    auto const mix = [&](jlong spot_given, jlong label_given, jlong desk_given) {
        return [&, spot_given, label_given, desk_given] {
            NATIVE(Probe_1mix, probe, nullptr, labels, bytes, spot_given, nullptr, label_given, nullptr, ints,
                   desk_given, nullptr, JNI_FALSE);
        };
    };
    expect_cost({
        {"first check", mix(0, label, desk), kept_text},
        {"second check", mix(spot, 0, desk), kept_text},
        {"last check", mix(spot, label, empty), kept_text + kept_ints},
        {"none", mix(spot, label, desk), kept_text + kept_ints},
    });
}

TEST_F(HeapTest, ResultsLeaveNothingOnceTheirHandlesAreDeleted) {
    for (bool const failing : {false, true}) {
        SCOPED_TRACE(failing ? "the SDK fails" : "the SDK succeeds");
        auto& given_labels = Probe::gift<std::vector<Label>>;
        given_labels.clear();
        given_labels.resize(3);
        Probe::gift<std::vector<std::shared_ptr<Desk>>> = {nullptr, std::make_shared<Desk>(1)};
        Probe::gift<std::shared_ptr<Desk>> = std::make_shared<Desk>(2);
        Probe::gift<std::string> = long_text;
        Probe::gift<std::vector<std::string>> = texts;
        Probe::gift<std::vector<int>> = {1, 2, 3};
        Probe::gift<std::vector<double>> = {1, 2, 3};
        if (failing) Probe::failure = long_text;
        expect_cost({
            {"text", [&] { NATIVE(Probe_1giveText, probe, nullptr); }},
            {"texts", [&] { NATIVE(Probe_1giveTexts, probe, nullptr); }},
            {"ints", [&] { NATIVE(Probe_1giveInts, probe, nullptr); }},
            {"doubles", [&] { NATIVE(Probe_1giveDoubles, probe, nullptr); }},
            {"trivial value", [&] { NATIVE(delete_1Spot, NATIVE(Probe_1giveSpot, probe, nullptr)); }},
            {"value", [&] { NATIVE(delete_1Label, NATIVE(Probe_1giveLabel, probe, nullptr)); }},
            {"shared", [&] { NATIVE(delete_1Desk, NATIVE(Probe_1giveShared, probe, nullptr)); }},
            {"shared by value", [&] { NATIVE(delete_1Desk, NATIVE(Probe_1giveDesk, probe, nullptr)); }},
            {"values",
             [&] {
                 if (auto const array = NATIVE(Probe_1giveLabels, probe, nullptr)) delete_labels(array);
             }},
            {"shared list",
             [&] {
                 auto const array = NATIVE(Probe_1giveDesks, probe, nullptr);
                 if (!array) return;
                 for (auto const* proxy : object(array).elements) NATIVE(delete_1Desk, proxy->handle);
             }},
        });
        Probe::gift<std::vector<std::shared_ptr<Desk>>>.clear();
        Probe::gift<std::shared_ptr<Desk>>.reset();
    }
}

TEST_F(HeapTest, ObjectsLeaveNothingOnceDeleted) {
    expect_cost({
        {"trivial value", [&] { NATIVE(delete_1Spot, NATIVE(new_1Spot_1_1SWIG_11, 1, 2)); }},
        {"value, failing", [&] { NATIVE(new_1Label, env.bytes("")); }, size_of_new(""s)},
        {"virtual destructor", [&] { NATIVE(delete_1Exception, NATIVE(new_1Exception, bytes)); }, kept_text},
        {"shared", [&] { NATIVE(delete_1Desk, NATIVE(new_1Desk_1_1SWIG_10, 2)); }},
        {"shared, failing", [&] { NATIVE(new_1Desk_1_1SWIG_10, -1); }},
        {"shared copy", [&] { NATIVE(delete_1Desk, NATIVE(new_1Desk_1_1SWIG_11, desk, nullptr)); }},
        {"shared class without operations of its own", [&] { NATIVE(delete_1Probe, NATIVE(new_1Probe)); }},
        {"upcast", [&] { NATIVE(delete_1Station, NATIVE(Desk_1SWIGSmartPtrUpcast, desk)); }},
        {"clone", [&] { NATIVE(delete_1Station, NATIVE(Desk_1clone, desk, nullptr)); }},
        {"constant", [&] { NATIVE(Spot_1ORIGIN_1get); }},
        {"extension", [&] { NATIVE(delete_1Spot, NATIVE(Spot_1plus, spot, nullptr, spot, nullptr)); }},
    });
}

}  // namespace
}  // namespace pedflux::jni::test

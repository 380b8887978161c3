#include "tests/runtime/bridge_test.h"

#include <cstdint>

/// What every class has: constructors, copies, deletes, upcasts, clones, type identifiers and constants.
namespace pedflux::jni::test {
namespace {

using ObjectTest = BridgeTest;

TEST_F(ObjectTest, ConstructorsOfBothKindsOfClass) {
    jlong const origin = NATIVE(new_1Spot_1_1SWIG_10);
    EXPECT_EQ(from_handle<Spot>(origin)->GetX(), 0);
    NATIVE(delete_1Spot, origin);

    jlong const exit = NATIVE(new_1Label, env.bytes("exit"));
    EXPECT_EQ(from_handle<Label>(exit)->GetText(), "exit");
    NATIVE(delete_1Label, exit);

    jlong const message = NATIVE(new_1Exception, env.bytes("too narrow"));
    auto const text = NATIVE(Exception_1getMessage, message, nullptr);
    EXPECT_EQ(std::string(object(text).bytes.begin(), object(text).bytes.end()), "too narrow");
    NATIVE(delete_1Exception, message);

    jlong const counter = NATIVE(new_1Desk_1_1SWIG_10, 6);
    EXPECT_EQ(object_of<Desk>(counter)->GetSeats(), 6);
    EXPECT_EQ(from_handle<Desk>(counter)->use_count(), 1);
    NATIVE(delete_1Desk, counter);
}

TEST_F(ObjectTest, CopiesAreObjectsOfTheirOwn) {
    jlong const second_spot = NATIVE(new_1Spot_1_1SWIG_12, spot, nullptr);
    NATIVE(Spot_1setX, second_spot, nullptr, 7.5);
    EXPECT_EQ(NATIVE(Spot_1getX, second_spot, nullptr), 7.5);
    EXPECT_EQ(NATIVE(Spot_1getX, spot, nullptr), 1.5);
    NATIVE(delete_1Spot, second_spot);

    jlong const second_desk = NATIVE(new_1Desk_1_1SWIG_11, desk, nullptr);
    EXPECT_NE(object_of<Desk>(second_desk), desk_object.get());
    EXPECT_EQ(NATIVE(Desk_1getSeats, second_desk, nullptr), 4);
    NATIVE(delete_1Desk, second_desk);
}

TEST_F(ObjectTest, AFailingConstructorGivesNoHandle) {
    expect({
        {"value class",
         [&] { EXPECT_EQ(NATIVE(new_1Label, env.bytes("")), 0); },
         {"GetByteArrayElements(byte[0], NULL)", "GetArrayLength(byte[0])",
          "ReleaseByteArrayElements(byte[0], JNI_ABORT)", "FindClass(com/kelvar/pedflux/Exception)",
          "ThrowNew(com/kelvar/pedflux/Exception, a label needs a text)"},
         "com/kelvar/pedflux/Exception: a label needs a text"},
        {"shared class",
         [&] { EXPECT_EQ(NATIVE(new_1Desk_1_1SWIG_10, -2), 0); },
         {"FindClass(com/kelvar/pedflux/Exception)",
          "ThrowNew(com/kelvar/pedflux/Exception, a desk cannot have -2 seats)"},
         "com/kelvar/pedflux/Exception: a desk cannot have -2 seats"},
    });
}

TEST_F(ObjectTest, DeletingNothingDoesNothing) {
    expect({
        {"trivial value", [&] { NATIVE(delete_1Spot, 0); }, {}},
        {"value with a destructor", [&] { NATIVE(delete_1Label, 0); }, {}},
        {"value with a virtual destructor", [&] { NATIVE(delete_1Exception, 0); }, {}},
        {"shared", [&] { NATIVE(delete_1Desk, 0); }, {}},
        {"shared, an empty holder", [&] { NATIVE(delete_1Desk, new_handle(nullptr)); }, {}},
    });
}

TEST_F(ObjectTest, AnUpcastSharesOwnership) {
    EXPECT_EQ(NATIVE(Desk_1SWIGSmartPtrUpcast, 0), 0);

    int const alive = Desk::count.alive;
    for (bool const base_goes_first : {true, false}) {
        jlong const derived = NATIVE(new_1Desk_1_1SWIG_10, 2);
        jlong const base = NATIVE(Desk_1SWIGSmartPtrUpcast, derived);
        EXPECT_NE(base, derived);
        EXPECT_EQ(object_of<Station>(base), object_of<Desk>(derived));
        if (base_goes_first) {
            NATIVE(delete_1Station, base);
            EXPECT_EQ(NATIVE(Desk_1getSeats, derived, nullptr), 2);
            NATIVE(delete_1Desk, derived);
        } else {
            NATIVE(delete_1Desk, derived);
            EXPECT_EQ(NATIVE(Station_1getTypeId, base, nullptr), 2);
            NATIVE(delete_1Station, base);
        }
        EXPECT_EQ(Desk::count.alive, alive);
    }

    jlong const empty_base = NATIVE(Desk_1SWIGSmartPtrUpcast, empty);
    EXPECT_NE(empty_base, 0) << "a holder of nothing is cast like any other";
    EXPECT_EQ(object_of<Station>(empty_base), nullptr);
    NATIVE(delete_1Station, empty_base);
}

TEST_F(ObjectTest, OperationsOfABaseTakeTheClassThatNamesThem) {
    auto const station = std::make_shared<Station>();
    EXPECT_EQ(NATIVE(Station_1getTypeId, to_handle(&station), nullptr), 1);
    EXPECT_EQ(NATIVE(Desk_1getTypeId, desk, nullptr), 2);
    EXPECT_EQ(NATIVE(Desk_1getFloor, desk, nullptr), 4);
}

TEST_F(ObjectTest, ClonesAreHandlesOfTheBase) {
    jlong const clone = NATIVE(Desk_1clone, desk, nullptr);
    EXPECT_NE(object_of<Station>(clone), desk_object.get());
    EXPECT_EQ(NATIVE(Station_1getTypeId, clone, nullptr), 2);
    NATIVE(delete_1Station, clone);

    desk_object = std::make_shared<Desk>(0);
    EXPECT_EQ(NATIVE(Desk_1clone, desk, nullptr), 0) << "an empty clone has no handle";
}

TEST_F(ObjectTest, StaticOverloadsTakeNoObject) {
    jlong const by_number = NATIVE(Desk_1create_1_1SWIG_10, 3);
    EXPECT_EQ(NATIVE(Desk_1getSeats, by_number, nullptr), 3);
    NATIVE(delete_1Desk, by_number);
    jlong const by_name = NATIVE(Desk_1create_1_1SWIG_11, env.bytes("front"));
    EXPECT_EQ(NATIVE(Desk_1getSeats, by_name, nullptr), 5);
    NATIVE(delete_1Desk, by_name);
    EXPECT_EQ(NATIVE(Desk_1create_1_1SWIG_10, 0), 0);
}

TEST_F(ObjectTest, ConstantsAreTheSdksOwnObjects) {
    EXPECT_EQ(NATIVE(Spot_1ORIGIN_1get), to_handle(&Spot::ORIGIN));
    EXPECT_EQ(NATIVE(Spot_1FAR_1AWAY_1get), to_handle(&Spot::FAR_AWAY));
}

TEST_F(ObjectTest, ExtensionsAreGuardedLikeEveryOperation) {
    jlong const sum = NATIVE(Spot_1plus, spot, nullptr, spot, nullptr);
    EXPECT_EQ(from_handle<Spot>(sum)->GetX(), 3);
    EXPECT_EQ(from_handle<Spot>(sum)->GetZ(), -4);
    NATIVE(delete_1Spot, sum);
    EXPECT_EQ(NATIVE(Spot_1plus, spot, nullptr, 0, nullptr), 0);
    EXPECT_EQ(env.pending, "java/lang/NullPointerException: pedflux::Spot const & is null");
}

// Under the sanitizers a call on a null object ends the program, as it may.
#ifndef __SANITIZE_ADDRESS__
TEST_F(ObjectTest, NothingChecksTheObjectThatAMethodIsCalledOn) {
    int elsewhere = 0;
    for (jlong const nothing : {jlong{0}, to_handle(&std::as_const(empty_object))}) {
        Probe::remembered_self = &elsewhere;
        NATIVE(Probe_1rememberSelf, nothing, nullptr);
        EXPECT_EQ(Probe::remembered_self, nullptr);
    }
}
#endif

TEST_F(ObjectTest, AnExhaustedHeapGivesNoHandleAndNoException) {
    ExhaustedHeap const exhausted;
    Probe::gift<std::shared_ptr<Desk>> = desk_object;
    expect({
        {"constructed value", [&] { EXPECT_EQ(NATIVE(new_1Spot_1_1SWIG_11, 1, 2), 0); }, {}},
        {"constructed shared", [&] { EXPECT_EQ(NATIVE(new_1Desk_1_1SWIG_10, 3), 0); }, {}},
        {"upcast", [&] { EXPECT_EQ(NATIVE(Desk_1SWIGSmartPtrUpcast, desk), 0); }, {}},
        {"shared result", [&] { EXPECT_EQ(NATIVE(Probe_1giveShared, probe, nullptr), 0); }, {"SDK gave"}},
        {"value result", [&] { EXPECT_EQ(NATIVE(Probe_1giveLabel, probe, nullptr), 0); }, {"SDK gave"}},
    });
    Probe::gift<std::shared_ptr<Desk>> = nullptr;
    EXPECT_EQ(desk_object.use_count(), 1) << "what has no holder is let go";
}

}  // namespace
}  // namespace pedflux::jni::test

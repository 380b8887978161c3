#pragma once

#include "tests/runtime/counted_heap.h"
#include "tests/runtime/recording_env.h"
#include "tests/runtime/sample_bindings.h"
#include "tests/runtime/trace.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Calls a native method as the virtual machine would. An object argument is `handle, nullptr`: nothing uses its proxy.
#define NATIVE(short_name, ...) PEDFLUX_SYMBOL(short_name)(&env, nullptr __VA_OPT__(, ) __VA_ARGS__)

namespace pedflux::jni::test {

/// One call and everything that may be seen of it.
struct Case {
    char const* name;
    std::function<void()> call;
    Trace trace;
    std::string pending = "";  ///< the pending exception afterwards
};

/// The environment, and an object of each kind with its handle.
class BridgeTest : public ::testing::Test {
  protected:
    ~BridgeTest() override {
        Probe::failure.reset();
        Probe::out_of_memory = false;
    }

    static jlong new_handle(std::shared_ptr<Desk> desk) { return hold(std::move(desk)); }

    void expect(std::vector<Case> const& cases) {
        for (auto const& [name, call, trace, pending] : cases) {
            SCOPED_TRACE(name);
            env.pending.clear();
            take_trace();
            call();
            EXPECT_EQ(take_trace(), trace);
            EXPECT_EQ(env.pending, pending);
        }
    }

    RecordingEnv env;
    std::shared_ptr<Probe> const probe_object = std::make_shared<Probe>();
    jlong const probe = to_handle(&probe_object);
    std::shared_ptr<Desk> desk_object = std::make_shared<Desk>(4);
    jlong const desk = to_handle(&desk_object);
    std::shared_ptr<Desk> const empty_object;
    jlong const empty = to_handle(&empty_object);
    Spot const spot_object{1.5, -2};
    jlong const spot = to_handle(&spot_object);
    Label const label_object{"exit"};
    jlong const label = to_handle(&label_object);
};

}  // namespace pedflux::jni::test

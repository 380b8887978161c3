#include "tools/java_generator/headers.h"

#include "tools/java_generator/proxies.h"
#include "tools/java_generator/surface.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::java {
namespace {

using manifest::Export;
using manifest::Kind;
using manifest::Passing;
using manifest::Role;
using testing::HasSubstr;
using testing::Not;

/// Headers of another SDK, in a directory of their own.
class OtherSdk : public testing::Test {
  protected:
    OtherSdk() : include_(std::filesystem::path(testing::TempDir()) / "other_sdk") {
        std::filesystem::remove_all(include_);
        std::filesystem::create_directories(include_ / "pedflux");
    }
    ~OtherSdk() override { std::filesystem::remove_all(include_); }

    Headers read(std::string_view source) {
        std::ofstream(include_ / "pedflux/all.h") << "#pragma once\n" << source;
        return read_headers(include_);
    }

    std::filesystem::path include_;
};

Export method(std::string name, std::string class_name, std::string operation, std::vector<manifest::Type> parameters) {
    Export described;
    described.name = std::move(name);
    described.class_name = class_name;
    described.owner = std::move(class_name);
    described.operation = std::move(operation);
    described.parameters = std::move(parameters);
    return described;
}

constexpr std::string_view described_headers = R"(
#include <memory>
#include <string>
#include <vector>
namespace pedflux {
class Gate;
/// How a gate
/// stands.
enum class State : int { OPEN = 3, SHUT = -1 /**< no way */, AJAR };
class Base { public: virtual ~Base(); virtual int GetKind(); };
class Gate : public Base {
  public:
    static Gate const NONE;  ///< no gate
    int GetKind() override;
    void Set(State state, std::vector<std::shared_ptr<Gate>> const& new_gates, unsigned int class_);
    void Set(std::string const& text);
    void Take(Gate const gate, std::shared_ptr<Gate>& other);
};
})";

TEST_F(OtherSdk, GivesNamesCommentsAndValues) {
    Headers const headers = read(described_headers);
    auto const& state = headers.enumerations.at("State");
    EXPECT_EQ(state.comment, "How a gate\nstands.");
    ASSERT_EQ(state.constants.size(), 3u);
    EXPECT_EQ(state.constants[0].value, 3);
    EXPECT_EQ(state.constants[1].comment, "no way");
    EXPECT_EQ(state.constants[2].value, 0);
    EXPECT_EQ(headers.classes.at("Gate").constants.at("NONE"), "no gate");
}

TEST_F(OtherSdk, FindsOverloadsByTheirTypes) {
    Headers const headers = read(described_headers);
    manifest::Type const gates{
        .kind = Kind::object, .name = "Gate", .shared = true, .list = true, .passing = Passing::const_reference};
    auto const* const set = headers.find(
        method("Gate_set__SWIG_0", "Gate", "Set",
               {{.kind = Kind::enumeration, .name = "State"}, gates, {.kind = Kind::natural, .name = {}}}));
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->parameters[1].name, "new_gates");
    auto const* const take =
        headers.find(method("Gate_take", "Gate", "Take",
                            {{.kind = Kind::object, .name = "Gate", .passing = Passing::const_value},
                             {.kind = Kind::object, .name = "Gate", .shared = true, .passing = Passing::reference}}));
    ASSERT_NE(take, nullptr);
    EXPECT_EQ(take->parameters[0].name, "gate");
    EXPECT_EQ(headers.find(method("Gate_set__SWIG_2", "Gate", "Set", {})), nullptr);
}

TEST_F(OtherSdk, KnowsWhereAVirtualOperationComesFrom) {
    Headers const headers = read(described_headers);
    EXPECT_EQ(headers.introducing_class(method("Gate_getKind", "Gate", "GetKind", {})), "Base");
}

TEST_F(OtherSdk, MayHaveNoCommentsAndNoNames) {
    std::vector<Export> const exports{method(
        "Gate_move", "Gate", "Move", {{.kind = Kind::double_float, .name = {}}, {.kind = Kind::integer, .name = {}}})};
    Surface const surface = join(exports, read("namespace pedflux { struct Gate { void Move(double, int); }; }"));
    std::string const source = proxy(surface.classes.at("Gate"), surface, {});
    EXPECT_THAT(source, HasSubstr("public void move(double argument1, int argument2) {\n"
                                  "        pedfluxJNI.Gate_move(handleOf(this), this, argument1, argument2);"));
    EXPECT_THAT(source, Not(HasSubstr("/**\n */")));
}

TEST_F(OtherSdk, IsRefusedWhenItDoesNotCompile) {
    EXPECT_THROW(read("namespace pedflux { struct Gate { Unknown x; }; }"), std::runtime_error);
}

TEST(Manifest, UnmanglesNames) {
    EXPECT_EQ(manifest::unmangled("Simulation_1create_1_1SWIG_12"), "Simulation_create__SWIG_2");
    EXPECT_EQ(manifest::unmangled("Color_1DARK_1BLUE_1get"), "Color_DARK_BLUE_get");
}

}  // namespace
}  // namespace pedflux::java

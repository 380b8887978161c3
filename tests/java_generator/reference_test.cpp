#include "tools/java_generator/reference.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace pedflux::java {
namespace {

using manifest::Export;
using manifest::Kind;
using manifest::Role;
using manifest::Type;

Export export_of(std::string const& name, Role role, std::string const& operation, Kind result = Kind::nothing) {
    Type type;
    type.kind = result;
    type.name = result == Kind::object ? "Vec2d" : "";
    return {.name = name,
            .role = role,
            .class_name = "Vec2d",
            .owner = "Vec2d",
            .operation = operation,
            .constant = false,
            .by_value = true,
            .parameters = {},
            .result = type};
}

TEST(Reference, HasEveryExportWithItsOperationAndAnAnchor) {
    std::vector<Export> const exports{
        export_of("new_Vec2d__SWIG_0", Role::constructor, "Vec2d"),
        export_of("delete_Vec2d", Role::destructor, "~Vec2d"),
        export_of("Vec2d_getX", Role::method, "GetX", Kind::double_float),
        export_of("Vec2d_setSide", Role::method, "SetSide"),
        export_of("Vec2d_ZERO_get", Role::constant, "ZERO", Kind::object),
    };
    auto const surface = join(exports, Headers{});
    std::string const page = reference_page(surface, {});

    for (auto const& one : exports) {
        EXPECT_NE(page.find("<dt id='" + one.name + "'>"), std::string::npos) << one.name;
        EXPECT_NE(page.find("<small>" + one.name + ": <code>"), std::string::npos) << one.name;
    }
    EXPECT_NE(page.find("1 classes with 5 exports"), std::string::npos);
    EXPECT_NE(page.find("<code>void delete()</code>"), std::string::npos);
    EXPECT_NE(page.find("<code>static Vec2d ZERO</code>"), std::string::npos);
    EXPECT_NE(page.find("<section id='Vec2d'>"), std::string::npos);
    EXPECT_NE(page.find("<a href='#Vec2d'>"), std::string::npos);
}

TEST(Reference, NeedsNothingButItself) {
    std::string const page = reference_page(join({}, Headers{}), {});

    for (std::string const elsewhere : {"src=", "http:", "https:", "@import", "<link"}) {
        EXPECT_EQ(page.find(elsewhere), std::string::npos) << elsewhere;
    }
    EXPECT_NE(page.find("<input type=\"search\""), std::string::npos);
}

}  // namespace
}  // namespace pedflux::java

#include "engine/model/names.h"

#include <string>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

TEST(Names, AreOneTo255BytesOfUtf8WithoutControlCharacters) {
    struct {
        std::string name;
        bool valid;
    } const cases[] = {
        {"Hall", true},
        {" Hall ", true},
        {"Halle \xc3\xa4\xe2\x82\xac\xf0\x9f\x9a\xb6", true},  // two, three and four bytes
        {"\xf4\x8f\xbf\xbf", true},                            // the last code point
        {std::string(255, 'a'), true},
        {std::string(256, 'a'), false},
        {"", false},
        {"   ", false},
        {"a\tb", false},
        {std::string("a\0b", 3), false},
        {"\x7f", false},
        {"\xc2\x85", false},  // a control character of two bytes
        {"\xc2\xa0", true},   // the first that is none
        {"\xff", false},
        {"\x80", false},  // a continuation alone
        {"\xc3", false},  // cut off
        {"\xe2\x82", false},
        {"\xc0\xaf", false},  // overlong
        {"\xe0\x80\x80", false},
        {"\xed\xa0\x80", false},      // a surrogate
        {"\xf4\x90\x80\x80", false},  // beyond the last code point
        {"\xc3(", false},
    };
    for (auto const& [name, valid] : cases) EXPECT_EQ(is_valid_name(name), valid) << name;
}

}  // namespace
}  // namespace pedflux::engine

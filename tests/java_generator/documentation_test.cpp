#include "tools/java_generator/documentation.h"

#include <string>

#include <gtest/gtest.h>

namespace pedflux::java {
namespace {

struct Case {
    char const* comment;
    char const* expected;  ///< the Javadoc without its marks
};

std::string without_marks(std::string const& javadoc) {
    std::string text;
    for (std::size_t start = 0; start < javadoc.size();) {
        std::size_t const end = javadoc.find('\n', start);
        std::string const line = javadoc.substr(start, end - start);
        if (line != "/**" && line != " */") text += (line == " *" ? "" : line.substr(3)) + "\n";
        start = end + 1;
    }
    return text;
}

TEST(Documentation, TurnsCommentsIntoJavadoc) {
    Names const names{{"GetGoalLine", "getGoalLine"}};
    Case const cases[] = {
        {"One line.", "One line.\n"},
        {"Two\nlines, a < b & c, user@host.", "Two\nlines, a &lt; b &amp; c, user&#64;host.\n"},
        {"First.\n\nSecond.", "First.\n\n<p>Second.\n"},
        {"Either\n- the `a < b`, which\n  goes on\n- or not\nAfter.",
         "Either\n<ul>\n<li>the {@code a < b}, which\n  goes on\n<li>or not\n</ul>\nAfter.\n"},
        {"See GetGoalLine, not GetGoalLines.", "See getGoalLine, not GetGoalLines.\n"},
        {"Opens a file. Throws Exception when there\nis none. Closes the former one.",
         "Opens a file. Closes the former one.\n\n@throws Exception when there is none\n"},
        {"Throws Exception when it is 1.5 or more.", "@throws Exception when it is 1.5 or more\n"},
        {"Sets both.\n@param up,down greater than 0\n  and finite",
         "Sets both.\n\n@param up greater than 0 and finite\n"
         "@param down greater than 0 and finite\n"},
        {"An open `mark", "An open {@code mark}\n"},
    };
    for (auto const& [comment, expected] : cases) {
        EXPECT_EQ(without_marks(javadoc(comment, names, Documented::operation)), expected) << comment;
    }
}

TEST(Documentation, LeavesOutWhatIsNotThere) {
    EXPECT_EQ(javadoc("", {}, Documented::operation), "");
    EXPECT_EQ(html("", {}), "");
}

TEST(Documentation, OnlyOperationsThrow) {
    std::string const comment = "Throws Exception when asked.";
    EXPECT_NE(javadoc(comment, {}, Documented::type_or_constant).find("* Throws Exception when asked."),
              std::string::npos);
}

TEST(Documentation, EscapesInHtmlAlsoInCode) {
    EXPECT_EQ(html("A `vector<int>`.", {}), "A <code>vector&lt;int&gt;</code>.\n");
}

}  // namespace
}  // namespace pedflux::java

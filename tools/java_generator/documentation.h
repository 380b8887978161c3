#pragma once

#include <map>
#include <string>
#include <string_view>

/// Turns the headers' comments into Java's.
namespace pedflux::java {

/// SDK names in comments and what Java calls them: "GetGoalLine" is "getGoalLine".
using Names = std::map<std::string, std::string, std::less<>>;

/// What a comment stands at; only operations throw.
enum class Documented { type_or_constant, operation };

/// A Javadoc comment with its line breaks, or nothing when the comment is empty. Understands paragraphs, "- " lists,
/// `code`, @param with one or several names, and "Throws Exception when ...", which becomes @throws.
std::string javadoc(std::string_view comment, Names const& names, Documented documented);

/// The same as a piece of HTML.
std::string html(std::string_view comment, Names const& names);

/// The text with what HTML takes as marks escaped.
std::string escaped(std::string_view text);

}  // namespace pedflux::java

#include "tools/java_generator/documentation.h"

#include "tools/java_generator/text.h"

#include <cctype>
#include <sstream>
#include <utility>
#include <vector>

namespace pedflux::java {

namespace {

/// How code is marked: {@code x} or <code>x</code>.
struct Markup {
    std::string_view code_begin;
    std::string_view code_end;
    bool escape_in_code;
};
constexpr Markup javadoc_markup{"{@code ", "}", false};
constexpr Markup html_markup{"<code>", "</code>", true};

char const* escape_of(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '@':
            return "&#64;";
        default:
            return nullptr;
    }
}

bool is_word(char character) { return std::isalnum(static_cast<unsigned char>(character)) || character == '_'; }

/// The words of a text that are SDK names, in Java's words.
std::string renamed(std::string_view text, Names const& names) {
    std::string result;
    for (std::size_t index = 0; index < text.size();) {
        std::size_t end = index;
        while (end < text.size() && is_word(text[end])) ++end;
        auto const found = names.find(text.substr(index, end - index));
        if (end == index) ++end;
        result += found == names.end() ? std::string(text.substr(index, end - index)) : found->second;
        index = end;
    }
    return result;
}

/// Marks within a line or paragraph.
std::string marked(std::string_view text, Markup const& markup) {
    std::string result;
    bool in_code = false;
    for (char const character : text) {
        if (character == '`') {
            result += in_code ? markup.code_end : markup.code_begin;
            in_code = !in_code;
        } else if (char const* const escape = escape_of(character); escape && (!in_code || markup.escape_in_code)) {
            result += escape;
        } else {
            result += character;
        }
    }
    return in_code ? result.append(markup.code_end) : result;
}

/// Where the sentence that starts at `start` ends, its full stop included.
std::size_t end_of_sentence(std::string_view text, std::size_t start) {
    for (std::size_t index = start; index < text.size(); ++index) {
        bool const stop = text[index] == '.' &&
                          (index + 1 == text.size() || std::isspace(static_cast<unsigned char>(text[index + 1])));
        bool const paragraph_ends = text.substr(index, 2) == "\n\n";
        if (stop) return index + 1;
        if (paragraph_ends) return index;
    }
    return text.size();
}

/// Takes the sentences "Throws Exception when ..." out of a comment; returns what they say about when.
std::vector<std::string> take_throws(std::string& comment) {
    constexpr std::string_view opening = "Throws Exception ";
    std::vector<std::string> conditions;
    std::string plain = comment;
    for (char& character : plain) {
        if (character == '\n') character = ' ';  // the sentence may be broken anywhere
    }
    for (std::size_t start = plain.find(opening); start != std::string::npos; start = plain.find(opening)) {
        std::size_t const end = end_of_sentence(comment, start);
        std::string condition = plain.substr(start + opening.size(), end - start - opening.size());
        if (condition.ends_with('.')) condition.pop_back();
        conditions.push_back(condition);
        std::size_t next = end;
        while (next < comment.size() && comment[next] == ' ') ++next;
        comment.erase(start, next - start);
        plain.erase(start, next - start);
    }
    while (!comment.empty() && std::isspace(static_cast<unsigned char>(comment.back()))) comment.pop_back();
    return conditions;
}

/// What is said of one parameter, or of several at once: "up,down".
struct ParameterNote {
    std::string names;
    std::string description;
};

/// A comment's parts: the text, and the parameters' descriptions.
struct Parts {
    std::string text;
    std::vector<ParameterNote> parameters;
};

Parts parts_of(std::string_view comment) {
    Parts parts;
    std::istringstream lines{std::string(comment)};
    bool in_parameter = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("@param ")) {
            ParameterNote note;
            std::istringstream words(line.substr(7));
            words >> note.names;
            std::getline(words >> std::ws, note.description);
            parts.parameters.push_back(std::move(note));
            in_parameter = true;
        } else if (in_parameter && line.starts_with(" ")) {
            parts.parameters.back().description += " " + line.substr(line.find_first_not_of(' '));
        } else {
            in_parameter = false;
            parts.text += line + "\n";
        }
    }
    while (!parts.text.empty() && parts.text.back() == '\n') parts.text.pop_back();
    return parts;
}

/// Paragraphs and lists.
std::string structured(std::string_view text) {
    std::string result;
    bool in_list = false;
    bool after_blank = false;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        bool const item = line.starts_with("- ");
        bool const continues = in_list && line.starts_with("  ");
        if (in_list && !item && !continues) result += "</ul>\n";
        if (item && !in_list) result += "<ul>\n";
        in_list = item || continues;
        if (line.empty()) {
            result += "\n";
            after_blank = true;
            continue;
        }
        if (item) {
            line.replace(0, 2, "<li>");
        } else if (after_blank) {
            result += "<p>";
        }
        after_blank = false;
        result += line + "\n";
    }
    if (in_list) result += "</ul>\n";
    return result;
}

std::string as_comment(std::string const& text) {
    std::string result = "/**\n";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) result += line.empty() ? " *\n" : " * " + line + "\n";
    return result + " */\n";
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string result;
    for (char const character : text) {
        char const* const escape = escape_of(character);
        result += escape ? std::string(escape) : std::string(1, character);
    }
    return result;
}

std::string javadoc(std::string_view comment, Names const& names, Documented documented) {
    if (comment.empty()) return "";
    Parts parts = parts_of(renamed(comment, names));
    std::vector<std::string> conditions;
    std::string tags;
    if (documented == Documented::operation) {
        conditions = take_throws(parts.text);
        for (auto const& [names_noted, description] : parts.parameters) {
            std::istringstream each(names_noted);
            for (std::string name; std::getline(each, name, ',');) {
                tags += fill("@param $1 $2\n", {name, marked(description, javadoc_markup)});
            }
        }
        for (auto const& condition : conditions)
            tags += "@throws Exception " + marked(condition, javadoc_markup) + "\n";
    }
    std::string const text = structured(marked(parts.text, javadoc_markup));
    return as_comment(text + (text.empty() || tags.empty() ? "" : "\n") + tags);
}

std::string html(std::string_view comment, Names const& names) {
    Parts const parts = parts_of(renamed(comment, names));
    std::string text = structured(marked(parts.text, html_markup));
    for (auto const& [names_noted, description] : parts.parameters) {
        text += fill("<br><i>$1</i> $2\n", {names_noted, marked(description, html_markup)});
    }
    return text;
}

}  // namespace pedflux::java

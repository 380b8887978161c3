#include "engine/model/pretty.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace pedflux::engine {

namespace {

bool is_plain_list(Json const& json) {
    return json.is_array() && std::ranges::none_of(json, [](Json const& element) { return element.is_structured(); });
}

void append(std::string& text, Json const& json, std::size_t depth) {
    if (!json.is_structured() || json.empty()) {
        text += json.dump();
        return;
    }
    std::string const line = is_plain_list(json) ? "" : "\n" + std::string(2 * (depth + 1), ' ');
    text += json.is_object() ? '{' : '[';
    bool first = true;
    for (auto const& [name, value] : json.items()) {
        if (!first) text += line.empty() ? ", " : ",";
        first = false;
        text += line;
        if (json.is_object()) text += Json(name).dump() + ": ";
        append(text, value, depth + 1);
    }
    if (!line.empty()) text += "\n" + std::string(2 * depth, ' ');
    text += json.is_object() ? '}' : ']';
}

}  // namespace

std::string pretty(Json const& json) {
    std::string text;
    append(text, json, 0);
    return text += '\n';
}

}  // namespace pedflux::engine

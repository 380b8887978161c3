#include "engine/model/saving.h"

#include "engine/model/check.h"
#include "engine/model/codec.h"
#include "engine/model/field_values.h"
#include "engine/model/pretty.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pedflux::engine {

namespace {

constexpr std::size_t deepest_nesting = 64;

Json to_json(ObjectState const& object) {
    Json json = {{"kind", object.kind->name}, {"id", GlobalId(object.id).GetString()}, {"name", object.name}};
    write_fields(fields_in(object), json);
    if (object.unknown) json.update(*object.unknown);
    return json;
}

Json to_json(Document const& document) {
    Json json = {{"format", file_format}, {"version", file_version}};
    json["settings"] = json_of(document.settings);
    Json& objects = json["objects"] = Json::array();
    for (auto const& object : document.objects()) objects.push_back(to_json(*object));
    for (auto const& object : document.unknown_objects()) objects.push_back(*object);
    if (document.unknown) json.update(*document.unknown);
    return json;
}

/// Refuses well-formed texts that nest too deep or have a member twice.
class Watch {
  public:
    bool operator()(int, Json::parse_event_t event, Json& parsed) {
        using Event = Json::parse_event_t;
        if (event == Event::object_start || event == Event::array_start) {
            if (members_.size() == deepest_nesting) {
                throw Exception(fmt::format("the file nests deeper than {} levels", deepest_nesting));
            }
            members_.emplace_back();
        } else if (event == Event::object_end || event == Event::array_end) {
            members_.pop_back();
        } else if (event == Event::key) {
            auto const& name = parsed.get_ref<std::string const&>();
            if (!members_.back().insert(name).second)
                throw Exception(fmt::format("the member '{}' occurs twice", name));
        }
        return true;
    }

  private:
    std::vector<std::unordered_set<std::string>> members_;
};

Json parse(std::string_view text) {
    try {
        return Json::parse(text, [watch = Watch()](int depth, Json::parse_event_t event, Json& parsed) mutable {
            return watch(depth, event, parsed);
        });
    } catch (Json::exception const& failure) {
        // What the parser says, without its own numbering: [json.exception.parse_error.101] parse error at line 1 ...
        std::string_view const message = failure.what();
        auto const bracket = message.find("] ");
        throw Exception(fmt::format("the file is not JSON: {}",
                                    bracket == std::string_view::npos ? message : message.substr(bracket + 2)));
    }
}

Json const& member(Json const& json, char const* name, Reading const& reading) {
    auto const found = json.find(name);
    if (found == json.end()) {
        throw Exception(
            fmt::format("{} lacks the member '{}'", reading.where.empty() ? "the file" : reading.where, name));
    }
    return *found;
}

std::string text_member(Json const& json, char const* name, Reading& reading) {
    Json const& found = member(json, name, reading);
    Step const step(reading, name);
    std::string text;
    read_json(text, found, reading);
    return text;
}

void require_format(Json const& json) {
    auto const format = json.is_object() ? json.find("format") : json.end();
    if (format == json.end() || *format != file_format) {
        throw Exception(
            fmt::format(R"(the file is not a pedflux project: it does not begin with "format": "{}")", file_format));
    }
    auto const version = json.find("version");
    if (version == json.end() || !version->is_number_unsigned() || *version == 0) {
        throw Exception("the file has no version number");
    }
    if (*version > file_version) {
        throw Exception(
            fmt::format("the file has version {}, made by a newer release; this one reads versions up to {}",
                        version->dump(), file_version));
    }
}

void read_object(Document& document, Json const& json, Kinds kinds, Reading& reading) {
    if (!json.is_object()) reading.refuse("an object", json);
    auto const kind_name = text_member(json, "kind", reading);
    auto const name = text_member(json, "name", reading);
    auto const& id_text = member(json, "id", reading);
    GlobalId id;
    {
        Step const step(reading, "id");
        read_json(id, id_text, reading);
    }
    reading.where = fmt::format("{} '{}'", kind_name, name);
    auto const kind = std::ranges::find(kinds, kind_name, &Kind::name);
    if (kind == kinds.end()) {
        document.keep_unknown(std::make_shared<Json const>(json), id, name);
        reading.warn("objects of this kind are not known; it is kept in the file, but takes no part");
        return;
    }
    ObjectState& object = document.add((*kind)->make(), id, name);
    read_object_fields(object, json, reading);
}

}  // namespace

std::string to_text(Document const& document) {
    try {
        return pretty(to_json(document));
    } catch (Json::exception const& failure) {
        throw Exception(fmt::format("the project cannot be written as JSON: {}", failure.what()));
    }
}

std::unique_ptr<Document> from_text(std::string_view text, Kinds kinds) {
    Json const json = parse(text);
    require_format(json);

    auto document = std::make_unique<Document>();
    Reading reading{document->open_warnings, ""};
    Json unknown;
    for (auto const& [name, value] : json.items()) {
        constexpr std::string_view known[] = {"format", "version", "settings", "objects"};
        if (std::ranges::find(known, name) != std::end(known)) continue;
        unknown[name] = value;
        reading.where = "the file";
        reading.warn(fmt::format("'{}' is not known; it is kept in the file", name));
    }
    if (!unknown.empty()) document->unknown = std::make_shared<Json const>(std::move(unknown));
    reading.where = "settings";
    read_json(document->settings, member(json, "settings", reading), reading);

    Json const& objects = member(json, "objects", reading);
    reading.where = "objects";
    if (!objects.is_array()) reading.refuse("a list", objects);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        reading.where = fmt::format("objects.{}", i);
        read_object(*document, objects[i], kinds, reading);
    }
    check_fields(Owner{nullptr, document.get()}, "", fields_in(document->settings));
    for (auto const& object : document->objects()) check_object(*object);
    return document;
}

std::string to_text(ObjectState const& object) {
    try {
        return to_json(object).dump();
    } catch (Json::exception const& failure) {
        throw Exception(fmt::format("{} cannot be written as JSON: {}", title_of(object), failure.what()));
    }
}

void add_from_text(Document& document, std::string_view text, Kinds kinds) {
    Reading reading{document.open_warnings, "the object"};
    read_object(document, parse(text), kinds, reading);
}

std::vector<std::string> differences(Document const& a, Document const& b) {
    auto const listed = [](Document const& document) {
        nlohmann::json json = to_json(document);
        return json;
    };
    auto const left = listed(a);
    std::vector<std::string> found;
    for (auto const& change : nlohmann::json::diff(left, listed(b))) {
        found.push_back(change.at("op").get<std::string>() + " " + change.at("path").get<std::string>());
    }
    return found;
}

}  // namespace pedflux::engine

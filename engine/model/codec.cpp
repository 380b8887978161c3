#include "engine/model/codec.h"

#include "engine/model/node.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pedflux::engine {

void Reading::refuse(std::string_view expected, Json const& found) const {
    std::string text = found.dump(-1, ' ', false, Json::error_handler_t::replace);
    constexpr std::size_t shown = 60;
    if (text.size() > shown) text = text.substr(0, shown) + "...";
    throw Exception(fmt::format("{} must be {}, not {}", where, expected, text));
}

void Reading::warn(std::string const& summary) {
    warnings.emplace_back(IssueCategory::WARNING, "Project file", where + ": " + summary);
}

namespace {

Json write(PlainType const& type, void const* value) { return type.write(value); }

Json write(EnumerationType const& type, void const* value) { return name_of_number(type.names, type.get(value)); }

Json write(OptionalType const& type, void const* value) {
    void const* const held = type.get(value);
    return held == nullptr ? Json() : write_value(type.held(), held);
}

Json write(ListType const& type, void const* value) {
    Json json = Json::array();
    for (std::size_t i = 0, count = type.size(value); i < count; ++i) {
        json.push_back(write_value(type.element(), type.at(value, i)));
    }
    return json;
}

Json write(VariantType const& type, void const* value) {
    auto const& kind = type.alternatives[type.index(value)];
    Json json = {{"kind", kind.name}};
    write_fields({kind.fields(), type.get(value)}, json);
    return json;
}

Json write(RecordType const& type, void const* value) {
    Json json = Json::object();
    write_fields({type.fields(), value}, json);
    return json;
}

Json write(SharedValueType const& type, void const* pointer) {
    auto const value = type.get(pointer);
    return value ? write_value(type.held(), value.get()) : Json();
}

Json write(NodeType const& type, void const* pointer) {
    NodeState const* const node = type.get(pointer);
    if (node == nullptr) return {};
    Json json = {{"kind", node->kind->name}};
    write_fields(fields_in(*node), json);
    return json;
}

/// Reads the fields and warns of members that are not known.
void read_all(FieldTable table, void* origin, Json const& json, Reading& reading) {
    Json unknown;
    read_fields(table, origin, json, reading, unknown);
    for (auto const& [name, member] : unknown.items())
        reading.warn(fmt::format("'{}' is not known and is left out", name));
}

std::string with_comma(std::string names, std::string_view name) {
    return names.append(names.empty() ? "" : ", ").append(name);
}

void read(PlainType const& type, void* value, Json const& json, Reading& reading) { type.read(value, json, reading); }

void read(EnumerationType const& type, void* value, Json const& json, Reading& reading) {
    auto const number =
        json.is_string() ? number_of_name(type.names, json.get_ref<std::string const&>()) : std::nullopt;
    if (!number) reading.refuse("one of " + names_of(type.names), json);
    type.set(value, *number);
}

void read(OptionalType const& type, void* value, Json const& json, Reading& reading) {
    type.reset(value);
    if (!json.is_null()) read_value(type.held(), type.emplace(value), json, reading);
}

void read(ListType const& type, void* value, Json const& json, Reading& reading) {
    if (!json.is_array()) reading.refuse("a list", json);
    type.clear(value);
    for (auto const& element : json) {
        Step const step(reading, std::to_string(type.size(value)));
        read_value(type.element(), type.append(value), element, reading);
    }
}

void read(VariantType const& type, void* value, Json const& json, Reading& reading) {
    auto const name = json.is_object() ? json.find("kind") : json.end();
    std::string names;
    for (auto const& kind : type.alternatives) {
        if (name != json.end() && *name == kind.name) {
            return read_all(kind.fields(), kind.emplace(value), json, reading);
        }
        names = with_comma(std::move(names), kind.name);
    }
    reading.refuse("an object whose kind is one of " + names, json);
}

void read(RecordType const& type, void* value, Json const& json, Reading& reading) {
    read_all(type.fields(), value, json, reading);
}

void read(SharedValueType const& type, void* pointer, Json const& json, Reading& reading) {
    auto const value = type.make();
    read_value(type.held(), value.get(), json, reading);
    type.assign(pointer, value.get());
}

void read(NodeType const& type, void* pointer, Json const& json, Reading& reading) {
    auto const name = json.is_object() ? json.find("kind") : json.end();
    std::string names;
    for (std::size_t i = 0; auto const* const kind = type.kind(i); ++i) {
        if (name != json.end() && *name == kind->name) {
            NodePointer node = kind->make();
            read_all(kind->fields(), node.get(), json, reading);
            return type.assign(pointer, std::move(node));
        }
        names = with_comma(std::move(names), kind->name);
    }
    reading.refuse("an object whose kind is one of " + names, json);
}

}  // namespace

Json write_value(FieldType const& type, void const* value) {
    return std::visit([&](auto const& shape) { return write(shape, value); }, type.shape);
}

void read_value(FieldType const& type, void* value, Json const& json, Reading& reading) {
    std::visit([&](auto const& shape) { read(shape, value, json, reading); }, type.shape);
}

void write_fields(Fields const& fields, Json& json) {
    for (Field const& field : fields.table) {
        Json written = write_value(*field.type, field.in(fields.origin));
        if (!written.is_null()) json[std::string(field.name)] = std::move(written);
    }
}

void read_fields(FieldTable table, void* origin, Json const& json, Reading& reading, Json& unknown) {
    if (!json.is_object()) reading.refuse("an object", json);
    for (Field const& field : table) {
        auto const member = json.find(std::string(field.name));
        if (member == json.end()) continue;
        Step const step(reading, field.name);
        read_value(*field.type, field.in(origin), *member, reading);
    }
    for (auto const& [name, member] : json.items()) {
        if (name != "kind" && std::ranges::find(table, name, &Field::name) == table.end()) unknown[name] = member;
    }
}

void read_object_fields(ObjectState& object, Json const& json, Reading& reading) {
    Json unknown;
    read_fields(object.kind->fields(), &object, json, reading, unknown);
    for (auto const* const name : {"id", "name"}) unknown.erase(name);
    for (auto const& [name, value] : unknown.items())
        reading.warn(fmt::format("'{}' is not known; it is kept in the file", name));
    if (!unknown.empty()) object.unknown = std::make_shared<Json const>(std::move(unknown));
}

}  // namespace pedflux::engine

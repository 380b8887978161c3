#pragma once

#include "engine/model/fields.h"
#include "engine/model/json.h"
#include "engine/model/reading.h"

#include <nlohmann/json.hpp>

/// How values are written to project files and read from them. Only sources include this: it brings all
/// of the JSON library.
namespace pedflux::engine {

Json write_value(FieldType const& type, void const* value);
void read_value(FieldType const& type, void* value, Json const& json, Reading& reading);

/// Adds the fields to a JSON object; what is not set is left out.
void write_fields(Fields const& fields, Json& json);
/// Reads the fields that the file has; the others keep what they are. Members with other names go to `unknown`.
void read_fields(FieldTable table, void* origin, Json const& json, Reading& reading, Json& unknown);
/// The same for an object, which keeps the members that are not known.
void read_object_fields(ObjectState& object, Json const& json, Reading& reading);

template <class T>
Json json_of(T const& value) {
    return write_value(field_type<T>(), &value);
}
template <class T>
void read_json(T& value, Json const& json, Reading& reading) {
    read_value(field_type<T>(), &value, json, reading);
}

}  // namespace pedflux::engine

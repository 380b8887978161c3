#pragma once

#include "engine/behaviour/population/population.h"
#include "engine/model/rules.h"
#include "engine/scene/scene_states.h"

/// What the identifiers in rules can refer to.
namespace pedflux::engine {

/// Objects of one of several kinds.
template <ObjectType... types>
constexpr RefersTo refers_to_kinds(std::string_view what) {
    return {what, [](ObjectState const& object) { return ((object.kind->type == types) || ...); }};
}

inline constexpr RefersTo A_PLACE{"a portal, floor, connection or zone", Population::is_place};
inline constexpr RefersTo AN_AREA{"a portal, floor, connection, zone or volume", [](ObjectState const& object) {
                                      return Population::is_place(object) || object.kind->type == ObjectType::VOLUME;
                                  }};
inline constexpr RefersTo A_GATE = refers_to<ConnectionState>("a connection");
inline constexpr RefersTo A_PORTAL = refers_to_kind<ObjectType::PORTAL>("a portal");
inline constexpr RefersTo A_SERVER = refers_to_kind<ObjectType::SERVER>("a server");
inline constexpr RefersTo A_TALLY_OBJECT = refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object");
inline constexpr RefersTo A_TOKEN = refers_to_kind<ObjectType::TOKEN>("a token");
inline constexpr RefersTo A_PROFILE = refers_to_kind<ObjectType::PROFILE>("a profile");
inline constexpr RefersTo A_FILTER_OBJECT = refers_to_kind<ObjectType::AGENT_FILTER_OBJECT>("an agent filter object");
inline constexpr RefersTo A_TEST_OBJECT = refers_to_kind<ObjectType::AGENT_TEST_OBJECT>("an agent test object");
inline constexpr RefersTo AN_EVENT_WITH_PEOPLE =
    refers_to_kinds<ObjectType::JOURNEY, ObjectType::EVACUATION, ObjectType::CIRCULATE>("an event that brings people");

}  // namespace pedflux::engine

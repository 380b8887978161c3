#pragma once

#include "engine/behaviour/population/population.h"
#include "engine/model/rules.h"
#include "engine/scene/scene_states.h"

/// What the identifiers in triggers, tests, filters, actions and tallies can refer to.
namespace pedflux::engine {

/// Objects of one of several kinds.
template <ObjectType... types>
constexpr RefersTo refers_to_kinds(std::string_view what) {
    return {what, [](ObjectState const& object) { return ((object.kind->type == types) || ...); }};
}

inline constexpr RefersTo a_place{"a portal, floor, connection or zone", Population::is_place};
inline constexpr RefersTo an_area{"a portal, floor, connection, zone or volume", [](ObjectState const& object) {
                                      return Population::is_place(object) || object.kind->type == ObjectType::VOLUME;
                                  }};
inline constexpr RefersTo a_gate = refers_to<ConnectionState>("a connection");
inline constexpr RefersTo a_portal = refers_to_kind<ObjectType::PORTAL>("a portal");
inline constexpr RefersTo a_server = refers_to_kind<ObjectType::SERVER>("a server");
inline constexpr RefersTo a_tally_object = refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object");
inline constexpr RefersTo a_token = refers_to_kind<ObjectType::TOKEN>("a token");
inline constexpr RefersTo a_profile = refers_to_kind<ObjectType::PROFILE>("a profile");
inline constexpr RefersTo a_filter_object = refers_to_kind<ObjectType::AGENT_FILTER_OBJECT>("an agent filter object");
inline constexpr RefersTo a_test_object = refers_to_kind<ObjectType::AGENT_TEST_OBJECT>("an agent test object");
inline constexpr RefersTo an_event_with_people =
    refers_to_kinds<ObjectType::JOURNEY, ObjectType::EVACUATION, ObjectType::CIRCULATE>("an event that brings people");

}  // namespace pedflux::engine

#pragma once

#include "engine/model/json.h"

#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace pedflux::engine {

class Document;
struct Field;
struct Kind;

/// What every object has. The state of a kind of object is a struct that derives from this one, or from the state of
/// its base class, and lists its fields once:
///
///     struct PortalState : NetworkObjectState {
///         static constexpr ObjectType TYPE = ObjectType::PORTAL;
///         static constexpr std::string_view NAME = "Portal";
///         using Handle = Portal;                                    // the SDK's class
///
///         AgentInitialPlacement placement = AgentInitialPlacement::RANDOM;
///
///         template <class Self, class Field>
///         static void fields(Self& self, Field&& field) {
///             NetworkObjectState::fields(self, field);
///             field("agentInitialPlacement", self.placement);
///         }
///     };
///
/// From that list comes one table of fields for each kind (fields.h): saving, opening, comparing, finding references
/// and checking values work on the table. A field may have a rule (rules.h), which its setter, opening and the message
/// of a refusal share. The names are those of the file, so they stay.
struct ObjectState : std::enable_shared_from_this<ObjectState> {
    ObjectState() = default;
    ObjectState(ObjectState const&) = default;
    ObjectState& operator=(ObjectState const&) = default;
    virtual ~ObjectState() = default;

    Kind const* kind = nullptr;
    Document* document = nullptr;  ///< none once the object was removed or the project closed
    GlobalId id;
    std::string name;
    Color color{0.75, 0.75, 0.75};
    bool visible = true;
    bool enabled = true;
    std::shared_ptr<Json const> unknown;  ///< members of the file that this version does not know; written back

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("color", self.color);
        field("visible", self.visible);
        field("enabled", self.enabled);
    }
};

/// What can be done with the states of one kind of object without knowing their type.
struct Kind {
    ObjectType type;
    std::string_view name;
    std::shared_ptr<ObjectState> (*make)();
    std::shared_ptr<ObjectState> (*copy)(ObjectState const& state);
    std::span<Field const> (*fields)();
    void (*check)(ObjectState const& state);  ///< a rule that binds several fields together; often none
    std::shared_ptr<SimObject> (*handle)(std::shared_ptr<ObjectState> state);
};

/// The kind of a state. Defined in kind.h; a component instantiates it once for each of its kinds:
///
///     template Kind const& kind_of<PortalState>();
template <class State>
Kind const& kind_of();

/// The object as messages name it: Floor 'Hall'.
std::string title_of(ObjectState const& state);

/// The way from a handle to the state behind it.
struct ObjectAccess {
    static std::shared_ptr<ObjectState> const& state(SimObject const& handle) { return handle.state_; }
};

/// The state behind a handle, by the type that belongs to the handle's class.
template <class State>
State& state_of(SimObject const& handle) {
    return static_cast<State&>(*ObjectAccess::state(handle));
}

}  // namespace pedflux::engine

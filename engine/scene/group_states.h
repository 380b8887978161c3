#pragma once

#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/scene_states.h"

#include <pedflux/scene.h>
#include <pedflux/transform.h>
#include <pedflux/vectors.h>

#include <optional>
#include <string_view>
#include <vector>

/// The states of lists of objects.
namespace pedflux::engine {

struct GroupState : ObjectState {
    std::vector<GlobalId> items;

    /// The objects that can be items.
    virtual RefersTo item_rule() const = 0;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("items", self.items, self.item_rule());
    }
};

struct PerimeterState : GroupState {
    static constexpr ObjectType TYPE = ObjectType::PERIMETER;
    static constexpr std::string_view NAME = "Perimeter";
    using Handle = Perimeter;

    RefersTo item_rule() const override {
        return refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");
    }
};

struct RouteBankState : GroupState {
    static constexpr ObjectType TYPE = ObjectType::ROUTE_BANK;
    static constexpr std::string_view NAME = "RouteBank";
    using Handle = RouteBank;

    RefersTo item_rule() const override {
        return refers_to<ConnectionState>("a link, stair, ramp or other connection");
    }

    static void check(RouteBankState const& self);
};

struct CollectionState : GroupState {
    static constexpr ObjectType TYPE = ObjectType::COLLECTION;
    static constexpr std::string_view NAME = "Collection";
    using Handle = Collection;

    RefersTo item_rule() const override { return refers_to_any("an object of the project"); }

    std::optional<std::vector<double>> weights;  ///< one for each item; automatic if not set

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        GroupState::fields(self, field);
        field("weights", self.weights, not_negative);
    }
    static void check(CollectionState const& self);
};

struct TransformState : GroupState {
    static constexpr ObjectType TYPE = ObjectType::TRANSFORM;
    static constexpr std::string_view NAME = "Transform";
    using Handle = Transform;

    RefersTo item_rule() const override { return refers_to<SceneState>("a scene object"); }

    Vec3d translation;  ///< metres
    Vec3d rotation;     ///< degrees about x, then y, then z
    double scale = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        GroupState::fields(self, field);
        field("translation", self.translation);
        field("rotation", self.rotation);
        field("scale", self.scale, above_zero);
    }
};

}  // namespace pedflux::engine

#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/model/properties.h"
#include "engine/scene/group_states.h"

#include <pedflux/geometry.h>
#include <pedflux/transform.h>

#include <memory>
#include <utility>
#include <vector>

namespace pedflux {

using engine::get;
using engine::lists;
using engine::SceneState;
using engine::state_of;
using engine::TransformState;

namespace {

struct Placement {
    Vec3d translation;
    Vec3d rotation;
    double scale = 1;
};

using Shape = std::shared_ptr<Geometry>;

Placement placement_of(TransformState const& state) { return {state.translation, state.rotation, state.scale}; }

// Identity steps are left out, since each adds rounding errors.

Shape turned(Shape const& shape, Vec3d const& direction, double angle) {
    return angle == 0 ? shape : shape->RotatedAbout(Axis3d(Vec3d::ZERO, direction), angle);
}
Shape scaled(Shape const& shape, double factor) {
    return factor == 1 ? shape : shape->ScaledAbout(Vec3d::ZERO, factor);
}
Shape moved(Shape const& shape, Vec3d offset) {
    return offset.GetSquaredLength() == 0 ? shape : shape->TranslatedBy(offset);
}

Shape placed(Shape shape, Placement const& placement) {
    shape = scaled(shape, placement.scale);
    shape = turned(shape, Vec3d::X_DIRECTION, placement.rotation.GetX());
    shape = turned(shape, Vec3d::Y_DIRECTION, placement.rotation.GetY());
    shape = turned(shape, Vec3d::Z_DIRECTION, placement.rotation.GetZ());
    return moved(shape, placement.translation);
}

Shape put_back(Shape shape, Placement const& placement) {
    Vec3d const& offset = placement.translation;
    shape = moved(shape, Vec3d(-offset.GetX(), -offset.GetY(), -offset.GetZ()));
    shape = turned(shape, Vec3d::Z_DIRECTION, -placement.rotation.GetZ());
    shape = turned(shape, Vec3d::Y_DIRECTION, -placement.rotation.GetY());
    shape = turned(shape, Vec3d::X_DIRECTION, -placement.rotation.GetX());
    return scaled(shape, 1 / placement.scale);
}

/// Sets the next state of the transform. Nothing changes unless all items can be moved.
void change(TransformState& state, TransformState next) {
    check_value(owner_of(state), "", next, engine::NoRule{});
    auto const& document = document_of(state);
    std::vector<std::pair<SceneState*, Shape>> shapes;
    auto const place = [&](std::vector<GlobalId> const& items, auto const& shape_of) {
        for (auto const& item : items) {
            auto* const object = document.find<SceneState>(item);
            if (object == nullptr) continue;  // of a kind that this version does not know
            if (Shape shape = shape_of(item, object->geometry)) shapes.emplace_back(object, std::move(shape));
        }
    };
    auto const before = placement_of(state);
    auto const after = placement_of(next);
    place(state.items, [&](GlobalId const& item, Shape const& shape) {
        Shape const original = put_back(shape, before);
        return lists(next.items, item) ? placed(original, after) : original;
    });
    place(next.items, [&](GlobalId const& item, Shape const& shape) {
        return lists(state.items, item) ? nullptr : placed(shape, after);
    });
    for (auto& [object, shape] : shapes) object->geometry = std::move(shape);
    state.translation = next.translation;
    state.rotation = next.rotation;
    state.scale = next.scale;
    state.items = std::move(next.items);
}

template <class Edit>
void edit(Transform& transform, Edit const& change_next) {
    auto& state = state_of<TransformState>(transform);
    auto next = state;
    change_next(next);
    change(state, std::move(next));
}

}  // namespace

Vec3d Transform::GetTranslation() { return get(*this, &TransformState::translation); }
void Transform::SetTranslation(Vec3d const& translation) {
    edit(*this, [&](TransformState& next) { next.translation = translation; });
}

Vec3d Transform::GetRotation() { return get(*this, &TransformState::rotation); }
void Transform::SetRotation(Vec3d const& rotation) {
    edit(*this, [&](TransformState& next) { next.rotation = rotation; });
}

double Transform::GetScale() { return get(*this, &TransformState::scale); }
void Transform::SetScale(double scale) {
    edit(*this, [&](TransformState& next) { next.scale = scale; });
}

void Transform::SetItems(std::vector<GlobalId> const& items) {
    edit(*this, [&](TransformState& next) { next.items = items; });
}
void Transform::AddItem(GlobalId const& item) { AddItems({item}); }
void Transform::AddItems(std::vector<GlobalId> const& items) {
    edit(*this, [&](TransformState& next) {
        for (auto const& item : items) {
            if (!lists(next.items, item)) next.items.push_back(item);
        }
    });
}

void Transform::ResetTransformWithoutChangingMembers() {
    auto& state = state_of<TransformState>(*this);
    state.translation = Vec3d::ZERO;
    state.rotation = Vec3d::ZERO;
    state.scale = 1;
}

}  // namespace pedflux

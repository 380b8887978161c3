#include "engine/model/lists.h"
#include "engine/model/properties.h"
#include "engine/scene/group_states.h"

#include <pedflux/scene.h>

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace pedflux {

using engine::CollectionState;
using engine::get;
using engine::PerimeterState;
using engine::set;
using engine::state_of;

void Perimeter::SetItems(std::vector<GlobalId> const& items) { set(*this, &PerimeterState::items, items); }
void Perimeter::AddItem(GlobalId const& item) { AddItems({item}); }
void Perimeter::AddItems(std::vector<GlobalId> const& items) {
    engine::add_to_list(*this, &PerimeterState::items, items);
}

namespace {

/// One weight for each item.
std::vector<double> weights_of(CollectionState const& state) {
    return state.weights.value_or(std::vector<double>(state.items.size(), 1));
}

}  // namespace

// Items and weights are checked together, on copies of both lists.

void Collection::SetItems(std::vector<GlobalId> const& items) {
    set(*this, &CollectionState::items, items);
    auto& state = state_of<CollectionState>(*this);
    if (state.weights) state.weights->assign(items.size(), 1);
}

void Collection::SetItemsWithWeights(std::vector<GlobalId> const& items, std::vector<double> const& weights) {
    auto& state = state_of<CollectionState>(*this);
    if (items.size() != weights.size()) {
        engine::Subject{owner_of(state), "weights"}.refuse(
            fmt::format("a list of {} weights, one for each item", items.size()),
            fmt::format("one of {}", weights.size()));
    }
    auto const before = state.items;
    set(*this, &CollectionState::items, items);
    try {
        set(*this, &CollectionState::weights, weights);
    } catch (...) {
        state.items = before;
        throw;
    }
}

void Collection::AddItem(GlobalId const& item) { AddItems({item}); }

void Collection::AddItems(std::vector<GlobalId> const& items) {
    engine::add_to_list(*this, &CollectionState::items, items);
    auto& state = state_of<CollectionState>(*this);
    if (state.weights) state.weights->resize(state.items.size(), 1);
}

void Collection::AddItemWithWeight(GlobalId const& item, double weight) {
    if (HasItem(item)) {
        SetItemWeight(item, weight);
        return;
    }
    auto& state = state_of<CollectionState>(*this);
    auto items = state.items;
    auto weights = weights_of(state);
    items.push_back(item);
    weights.push_back(weight);
    SetItemsWithWeights(items, weights);
}

void Collection::RemoveItem(GlobalId const& item) {
    auto& state = state_of<CollectionState>(*this);
    auto const index = engine::index_in_list(*this, &CollectionState::items, item);
    state.items.erase(state.items.begin() + index);
    if (state.weights) state.weights->erase(state.weights->begin() + index);
}

bool Collection::HasWeights() { return engine::has(*this, &CollectionState::weights); }

double Collection::GetItemWeight(GlobalId const& item) {
    auto const index = engine::index_in_list(*this, &CollectionState::items, item);
    return weights_of(state_of<CollectionState>(*this))[static_cast<std::size_t>(index)];
}

std::vector<double> Collection::GetItemWeights() { return weights_of(state_of<CollectionState>(*this)); }

void Collection::SetItemWeight(GlobalId const& item, double weight) {
    auto const index = engine::index_in_list(*this, &CollectionState::items, item);
    auto weights = weights_of(state_of<CollectionState>(*this));
    weights[static_cast<std::size_t>(index)] = weight;
    set(*this, &CollectionState::weights, weights);
}

void Collection::SetManualWeights(double weight) {
    set(*this, &CollectionState::weights, std::vector<double>(get(*this, &CollectionState::items).size(), weight));
}

void Collection::SetAutomaticWeights() { engine::clear(*this, &CollectionState::weights); }

}  // namespace pedflux

#pragma once

#include "engine/behaviour/events/time_reference.h"
#include "engine/model/document.h"

#include <pedflux/identifiers.h>
#include <pedflux/tallies.h>
#include <pedflux/transitions.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace pedflux::engine {

/// The place of something that rules mention in the list of its kind.
using SymbolIndex = std::uint32_t;

/// What compiled rules mention. They refer to it by numbers, so that whoever runs them looks each thing up once. All
/// rules of a simulation are compiled with the same one; the numbers follow the order in which rules are compiled.
struct SymbolTable {
    std::vector<GlobalId> objects;  ///< each once
    std::vector<std::shared_ptr<Tally>> tallies;
    std::vector<std::shared_ptr<Transition>> transitions;
    std::vector<TimeInFrame> times;
    SymbolIndex chances = 0;  ///< how many tests of chance there are

    SymbolIndex object(GlobalId const& id) {
        auto const [entry, is_new] = numbers_.emplace(id, static_cast<SymbolIndex>(objects.size()));
        if (is_new) objects.push_back(id);
        return entry->second;
    }

    /// Adds to one of the lists.
    template <class Value>
    static SymbolIndex add(std::vector<Value>& list, Value value) {
        list.push_back(std::move(value));
        return static_cast<SymbolIndex>(list.size() - 1);
    }

  private:
    std::unordered_map<GlobalId, SymbolIndex, IdentifierHash, IdentifierEqual> numbers_;
};

}  // namespace pedflux::engine

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

/// The place of a symbol in the list of its kind.
using SymbolIndex = std::uint32_t;

/// The objects, tallies, transitions and times that compiled programs refer to by number, so that the simulation looks
/// up each of them once. All programs of a simulation share one table; numbers follow the order of compilation.
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

#pragma once

#include "engine/model/document.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace pedflux::engine {

/// The maximum number of nodes in one program, including named ones wherever they are referred to.
inline constexpr int most_compiled_nodes = 100'000;
/// The maximum nesting depth, including named nodes.
inline constexpr int deepest_compiled_node = 1'000;

struct CompiledExtent {
    int nodes = 0;
    int level = 0;
};

/// Counts a node, and its level while it is compiled. Throws Exception when a limit is exceeded.
class CountedNode {
  public:
    CountedNode(CompiledExtent& extent, std::string_view family) : extent_(extent) {
        if (++extent.nodes > most_compiled_nodes || extent.level == deepest_compiled_node) {
            throw Exception(std::string(family) + ": with those that it names, nested deeper than " +
                            std::to_string(deepest_compiled_node) + " levels or made of more than " +
                            std::to_string(most_compiled_nodes) + " parts");
        }
        ++extent.level;
    }
    CountedNode(CountedNode const&) = delete;
    CountedNode& operator=(CountedNode const&) = delete;
    ~CountedNode() { --extent_.level; }

  private:
    CompiledExtent& extent_;
};

/// The named nodes on the way to the one that is being compiled, the outermost first. `State` is the state of the
/// objects that give the nodes their names.
template <class State>
class NamedNodes {
  public:
    explicit NamedNodes(Document const& project) : project_(project) {}

    /// Calls compile(state) for a named node. Throws Exception when it does not exist, or refers to itself by way of
    /// others.
    template <class Compile>
    auto follow(GlobalId const& id, Compile const& compile) {
        auto const* const state = project_.find<State>(id);
        if (state == nullptr) {
            throw Exception(std::string(State::NAME) + ": the project has none with the identifier " +
                            GlobalId(id).GetString());
        }
        refuse_cycle(*state);
        path_.push_back(state);
        auto const result = compile(*state);
        path_.pop_back();
        return result;
    }

  private:
    void refuse_cycle(State const& state) const {
        auto const first = std::ranges::find(path_, &state);
        if (first == path_.end()) return;
        std::string way;
        for (auto const* const passed : std::vector(first, path_.end())) way += "'" + passed->name + "' -> ";
        throw Exception(title_of(state) + " leads back to itself by names: " + way + "'" + state.name + "'");
    }

    Document const& project_;
    std::vector<State const*> path_;
};

}  // namespace pedflux::engine

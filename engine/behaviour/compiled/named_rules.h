#pragma once

#include "engine/model/document.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace pedflux::engine {

/// How many rules one can be made of, with those that it names wherever it names them.
inline constexpr int MOST_RULES = 100'000;
/// How deep rules can nest, with those that they name.
inline constexpr int DEEPEST_RULE = 1'000;

struct RuleExtent {
    int rules = 0;
    int level = 0;
};

/// Counts a rule, and its level for as long as it is being compiled. Throws Exception when it is one too many.
class CountedRule {
  public:
    CountedRule(RuleExtent& extent, std::string_view family) : extent_(extent) {
        if (++extent.rules > MOST_RULES || extent.level == DEEPEST_RULE) {
            throw Exception(std::string(family) + ": with those that it names, nested deeper than " +
                            std::to_string(DEEPEST_RULE) + " levels or made of more than " +
                            std::to_string(MOST_RULES) + " parts");
        }
        ++extent.level;
    }
    CountedRule(CountedRule const&) = delete;
    CountedRule& operator=(CountedRule const&) = delete;
    ~CountedRule() { --extent_.level; }

  private:
    RuleExtent& extent_;
};

/// The named rules that lead to the one which is being compiled, the outermost first. `State` is that of the objects
/// which give rules their names.
template <class State>
class NamedRules {
  public:
    explicit NamedRules(Document const& project) : project_(project) {}

    /// Calls compile(state) for a named rule. Throws Exception when there is none, or when it is being compiled already
    /// because it leads back to itself.
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

#pragma once

#include "engine/behaviour/compiled/agent_situation.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace pedflux::engine {

/// An agent's moment of which a test says what is true: relations to objects by their names, and numbers.
struct TestMoment : TestSituation {
    explicit TestMoment(SymbolTable const& all) : symbols(all) {}

    SymbolTable const& symbols;
    std::set<std::pair<std::string_view, std::string>> facts;

    void add(std::string_view relation, GlobalId id) { facts.emplace(relation, id.GetString()); }
    bool is(std::string_view relation, SymbolIndex object) const {
        return facts.contains({relation, GlobalId(symbols.objects[object]).GetString()});
    }

    bool was_created_by(SymbolIndex event) const override { return is("created by", event); }
    bool entered_at(SymbolIndex place) const override { return is("entered at", place); }
    bool has_profile(SymbolIndex profile) const override { return is("has profile", profile); }
    bool is_in(SymbolIndex area) const override { return is("in", area); }
    bool holds(SymbolIndex token) const override { return is("holds", token); }

    double seconds_here = 0;
    ChanceKey key{1, 2, 3};
    std::map<SymbolIndex, double> tallies;
    double now = 0;
    std::map<SymbolIndex, double> times;

    double age() const override { return seconds_here; }
    bool initial_exit_is(SymbolIndex portal) const override { return is("first exit", portal); }
    ChanceKey chance_key() const override { return key; }
    bool is_active(SymbolIndex event) const override { return is("active", event); }
    bool is_gate_open(SymbolIndex gate, GateStateDirection way) const override {
        return is(way == GateStateDirection::BALL_TO_BOX ? "open forth" : "open back", gate);
    }
    bool is_server_open(SymbolIndex server, ServerAccessPoint point) const override {
        return is(point == ServerAccessPoint::ENTRANCE ? "entrance open" : "exit open", server);
    }
    double tally(SymbolIndex tally) const override { return tallies.at(tally); }
    double clock() const override { return now; }
    double time(SymbolIndex time) const override { return times.at(time); }
};

}  // namespace pedflux::engine

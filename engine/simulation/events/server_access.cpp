#include "engine/simulation/events/server_access.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/events/event_engine.h"

namespace pedflux::engine {

namespace {

AccessRule rule_of(ServerAccessState const& access, int frame_rate, FloorPlan const& plan, TriggerCompiler& triggers) {
    auto rule = access_rule_of(access, frame_rate, triggers);
    rule.sides = {access.point != ServerAccessPoint::EXIT, access.point != ServerAccessPoint::ENTRANCE};
    for (auto const& id : access.servers) {
        if (auto const server = server_of(plan, id); server != no_server) rule.things.push_back(server);
    }
    return rule;
}

void update(SimulationState& run, std::uint32_t server) {
    auto& live = run.servers[server];
    bool const was_open = live.open[entrance_side];
    auto const everybody = [](AccessRule const&) { return true; };
    for (std::size_t side = 0; side < live.open.size(); ++side) {
        live.open[side] = run.events->servers.is_open(server, side, run.frame, everybody);
    }
    if (!was_open && live.open[entrance_side]) live.open_since = run.seconds();
}

}  // namespace

AccessRules server_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers) {
    AccessRules servers;
    servers.from_program.resize(plan.servers.size());
    for (auto const* const access : document.objects<ServerAccessState>()) {
        if (!access->enabled) continue;
        try {
            servers.rules.push_back(rule_of(*access, document.settings.frame_rate, plan, triggers));
        } catch (Exception const& exception) {
            refuse(title_of(*access) + ": " + exception.GetMessage());
        }
    }
    return servers;
}

void obey_server_rules(SimulationState& run) {
    auto& rules = run.events->servers;
    if (rules.rules.empty()) return;
    rules.step(*run.events, run.frame);
    for (std::uint32_t server = 0; server < run.servers.size(); ++server) update(run, server);
}

void set_server_by_program(SimulationState& run, std::uint32_t server, std::size_t side, std::optional<bool> open) {
    Sides sides{};
    sides[side] = true;
    run.events->servers.obey_program(server, sides, open);
    update(run, server);
}

bool is_open(SimulationState const& run, std::uint32_t server, ServerAccessPoint point) {
    if (server == no_server) return false;
    auto const& open = run.servers[server].open;
    return (point == ServerAccessPoint::EXIT || open[entrance_side]) &&
           (point == ServerAccessPoint::ENTRANCE || open[exit_side]);
}

}  // namespace pedflux::engine

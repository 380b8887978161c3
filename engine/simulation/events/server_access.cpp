#include "engine/simulation/events/server_access.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"

#include <pedflux/exception.h>

#include <fmt/format.h>

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

void update(AccessControl const& control, Clock const& clock, ServerQueue& queue, std::uint32_t server) {
    bool const was_open = queue.open[entrance_side];
    auto const everybody = [](std::size_t) { return true; };
    for (std::size_t side = 0; side < queue.open.size(); ++side) {
        queue.open[side] = control.is_open(server, side, clock.frame, everybody);
    }
    if (!was_open && queue.open[entrance_side]) queue.open_since = clock.seconds();
}

}  // namespace

std::vector<AccessRule> server_rules_of(Document const& document, FloorPlan const& plan, TriggerCompiler& triggers) {
    std::vector<AccessRule> rules;
    for (auto const* const access : document.objects<ServerAccessState>()) {
        if (!access->enabled) continue;
        try {
            rules.push_back(rule_of(*access, document.settings.frame_rate, plan, triggers));
        } catch (Exception const& exception) {
            refuse(fmt::format("{}: {}", title_of(*access), exception.GetMessage()));
        }
    }
    return rules;
}

void obey_server_rules(AccessControl& control, TriggerRun const& triggers, Clock const& clock, ServerQueues& servers) {
    if (control.rules.empty()) return;
    update_ranges(control, triggers, clock.frame);
    for (std::uint32_t server = 0; server < servers.queues.size(); ++server) {
        update(control, clock, servers.queues[server], server);
    }
}

void set_server_by_program(AccessControl& control, Clock const& clock, ServerQueues& servers, std::uint32_t server,
                           std::size_t side, std::optional<bool> open) {
    Sides sides{};
    sides[side] = true;
    set_by_program(control, server, sides, open);
    update(control, clock, servers.queues[server], server);
}

}  // namespace pedflux::engine

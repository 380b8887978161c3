#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/simulation.h>

#include <algorithm>

namespace pedflux {

namespace {

using Agents = std::vector<std::shared_ptr<Agent>>;

/// By number, each once.
Agents in_order(Agents agents) {
    auto const number = [](std::shared_ptr<Agent> const& agent) { return agent->GetId(); };
    std::ranges::stable_sort(agents, {}, number);
    auto const same = [&](auto const& a, auto const& b) { return number(a) == number(b); };
    agents.erase(std::unique(agents.begin(), agents.end(), same), agents.end());
    return agents;
}

Agents passing(std::vector<std::pair<GlobalId, std::shared_ptr<Agent>>> const& list, GlobalId const& object) {
    Agents agents;
    for (auto const& [where, agent] : list) {
        if (where.InternalEquals(object)) agents.push_back(agent);
    }
    return in_order(std::move(agents));
}

}  // namespace

FrameSummary::FrameSummary() : changes_(std::make_shared<engine::FrameChanges>()) {}
FrameSummary::FrameSummary(std::shared_ptr<engine::FrameChanges const> changes) : changes_(std::move(changes)) {}
FrameSummary::FrameSummary(FrameSummary const&) = default;
FrameSummary::FrameSummary(FrameSummary&&) noexcept = default;
FrameSummary& FrameSummary::operator=(FrameSummary const&) = default;
FrameSummary& FrameSummary::operator=(FrameSummary&&) noexcept = default;
FrameSummary::~FrameSummary() = default;
Agents FrameSummary::GetCreatedAgents() { return in_order(changes_->created); }
Agents FrameSummary::GetDeletedAgents() { return in_order(changes_->deleted); }
Agents FrameSummary::GetAgentsThatEntered(GlobalId const& object) { return passing(changes_->entered, object); }
Agents FrameSummary::GetAgentsThatExited(GlobalId const& object) { return passing(changes_->exited, object); }
Agents FrameSummary::GetAgentsThatReceived(GlobalId const& token) { return passing(changes_->received, token); }
Agents FrameSummary::GetAgentsThatLost(GlobalId const& token) { return passing(changes_->lost, token); }

}  // namespace pedflux

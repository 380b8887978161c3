#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/agents/tokens.h"
#include "engine/simulation/present_agent.h"

#include <pedflux/agents.h>
#include <pedflux/avatars.h>

#include <algorithm>

/// What agents carry and look like.
namespace pedflux {

using engine::present_agent;

namespace {

/// Throws Exception unless the identifier names an object of that kind in the simulated project.
engine::ObjectState& require_object(engine::SimulationState const& state, GlobalId const& id, ObjectType type,
                                    std::string const& what) {
    auto* const object = state.project->find(id);
    if (object == nullptr || object->kind->type != type) {
        engine::refuse("The identifier of " + what + " of the simulated project is needed, not " +
                       (object == nullptr ? GlobalId(id).GetString() : "that of " + engine::title_of(*object)));
    }
    return *object;
}

}  // namespace

std::vector<GlobalId> Agent::GetTokenIds() { return present_agent(run_, id_).info.tokens; }

void Agent::GiveToken(GlobalId const& token) {
    auto const agent = present_agent(run_, id_);
    require_object(*agent.state, token, ObjectType::TOKEN, "a token");
    give_token(agent.state->agents, agent.state->journal, agent.state->clock, agent.motion.agent, token);
}

void Agent::RemoveToken(GlobalId const& token) {
    auto const agent = present_agent(run_, id_);
    require_object(*agent.state, token, ObjectType::TOKEN, "a token");
    take_token(agent.state->agents, agent.state->journal, agent.state->clock, agent.motion.agent, token);
}

bool Agent::HasAvatar() { return present_agent(run_, id_).info.avatar.has_value(); }

std::shared_ptr<Avatar> Agent::GetAvatar() {
    auto const agent = present_agent(run_, id_);
    if (!agent.info.avatar) return nullptr;
    auto& object = require_object(*agent.state, *agent.info.avatar, ObjectType::AVATAR, "an avatar");
    return std::dynamic_pointer_cast<Avatar>(agent.state->project->handle_of(object));
}

void Agent::SetAvatar(std::shared_ptr<Avatar> avatar) {
    auto const agent = present_agent(run_, id_);
    if (!avatar) engine::refuse("An avatar is needed, not an empty one; ResetAvatar takes the agent's avatar away");
    GlobalId const id = avatar->GetId();
    require_object(*agent.state, id, ObjectType::AVATAR, "an avatar");
    agent.info.avatar = id;
}

void Agent::ResetAvatar() {
    auto const agent = present_agent(run_, id_);
    agent.info.avatar = agent.info.origin.avatar;
}

}  // namespace pedflux

#include "engine/behaviour/triggers/trigger_run.h"

namespace pedflux::engine {

TriggerRun::TriggerRun(TriggerProgram const& program)
    : program_(program), memories_(program.moments.size()), starts_(program.events.size()) {}

void TriggerRun::step(TriggerFacts const& facts) {
    ++frame_;
    for (MomentIndex i = 0; i < memories_.size(); ++i) {
        auto const& moment = program_.moments[i];
        auto& own = memories_[i];
        own.now = moment.rule.evaluate({*this, facts, own});
        if (moment.starts != NO_EVENT && own.now.fires) starts_[moment.starts].push_back(frame_);
    }
}

bool TriggerRun::is_active(EventIndex event, TriggerFacts const& facts) const {
    auto const& planned = program_.events[event];
    if (planned.lasts) return memories_[planned.start].now.holds;
    return !starts_[event].empty() && facts.has_people(event);
}

bool TriggerRun::may_fire_again(MomentIndex moment) const {
    auto const& may_fire_again = program_.moments[moment].rule.may_fire_again;
    return !may_fire_again || may_fire_again(*this, memories_[moment]);
}

}  // namespace pedflux::engine

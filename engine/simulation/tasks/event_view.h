#pragma once

#include "engine/behaviour/compiled/symbol_table.h"
#include "engine/simulation/world/clock.h"

#include <pedflux/identifiers.h>

#include <cstddef>
#include <optional>

namespace pedflux::engine {

/// What tasks and tests ask about events and tallies. The event engine answers; nothing that is asked changes it.
class EventView {
  public:
    EventView() = default;
    EventView(EventView const&) = delete;
    EventView& operator=(EventView const&) = delete;
    virtual ~EventView() = default;

    /// Whether an event has started and has not ended: of its people, some are still to come or there; a broadcast's
    /// range is on. One that is disabled never starts.
    virtual bool is_active(GlobalId const& event) const = 0;
    /// Seconds since the simulation's start at which an event started last; none when it has not.
    virtual std::optional<double> last_start(GlobalId const& event) const = 0;
    /// How often an event has started.
    virtual std::size_t start_count(GlobalId const& event) const = 0;
    /// The value of a tally that rules compare.
    virtual double tally_value(SymbolIndex tally) const = 0;
};

/// Seconds since midnight; none while it is not known.
std::optional<double> clock_time(Clock const& clock, EventView const& events, TimeInFrame const& time);

}  // namespace pedflux::engine

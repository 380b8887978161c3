#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>

namespace pedflux {

namespace engine {
struct TimeReferenceAccess;
}

/// What a time is counted from.
enum class TimeReferenceFrame : int {
    ABSOLUTE = 0,                ///< the simulated clock, which shows seconds after midnight
    AFTER_SIMULATION_START = 1,  ///< the time at which the simulation starts
    BEFORE_SIMULATION_END = 2,   ///< back from the time at which the simulation ends
    AFTER_EVENT_START = 3,       ///< the time at which an event starts
};

/// A time of a simulation, in whole seconds of a frame. It does not change.
class PEDFLUX_API TimeReference {
  public:
    /// Used by the library.
    /// @throws Exception for negative seconds, and for an invalid event in the frame that needs one
    TimeReference(TimeReferenceFrame frame, int seconds, GlobalId const& event);

    /// @param seconds after midnight, at least 0; 86400 is the next midnight
    static std::shared_ptr<TimeReference> Absolute(int seconds);
    /// @param seconds at least 0
    static std::shared_ptr<TimeReference> AfterSimulationStart(int seconds);
    /// @param seconds at least 0
    static std::shared_ptr<TimeReference> BeforeSimulationEnd(int seconds);
    /// @param seconds at least 0
    static std::shared_ptr<TimeReference> AfterEventStart(GlobalId const& event, int seconds);

    TimeReferenceFrame GetTimeReferenceFrame();

  private:
    friend engine::TimeReferenceAccess;

    TimeReferenceFrame frame_;
    int seconds_;
    GlobalId event_;  ///< invalid in the frames that need none
};

/// A named time that others refer to. Midnight unless set.
class PEDFLUX_API TimeObject : public SimObject {
  public:
    using SimObject::SimObject;

    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
    /// @param seconds after midnight, at least 0
    void SetAbsoluteTime(int seconds);
};

}  // namespace pedflux

#pragma once

#include "engine/transport/timetable_states.h"

#include <optional>
#include <string>
#include <vector>

/// What the files of a timetable say, entry by entry in their order.
namespace pedflux::engine {

struct ReferenceEvent {
    std::string name;
    int time;  ///< seconds after midnight
};

struct TimetableGroup {
    std::string name;
    int count;  ///< persons
    std::string origin;
    std::optional<std::string> profile;  ///< the default one when there is none
};

struct TimetableActivity {
    std::string group;
    std::string event;
    int offset;  ///< seconds after the event
    std::string place;
    int duration;  ///< seconds
};

// Each throws Exception, which names the file and the place in it, when a column is missing, a line has another number
// of fields than the first one, a value is not of its column's kind or a name that must be there once is there twice.
std::vector<ReferenceEvent> reference_events_in(TimetableFile const& file);
std::vector<TimetableGroup> groups_in(TimetableFile const& file);
std::vector<TimetableActivity> activities_in(TimetableFile const& file);

}  // namespace pedflux::engine

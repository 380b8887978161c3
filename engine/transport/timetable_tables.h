#pragma once

#include "engine/transport/timetable_states.h"

#include <optional>
#include <string>
#include <vector>

/// The entries of the files of a timetable, in their order.
namespace pedflux::engine {

struct ReferenceEvent {
    std::string name;
    int time;  ///< seconds after midnight
};

struct TimetableGroup {
    std::string name;
    int count;  ///< persons
    std::string origin;
    std::optional<std::string> profile;  ///< none: the default profile
};

struct TimetableActivity {
    std::string group;
    std::string event;
    int offset;  ///< seconds after the event
    std::string place;
    int duration;  ///< seconds
};

// Each throws Exception, which names the file and the position in it, when a column is missing, the number of fields
// differs from that of the first line, a value is not of its column's type or a unique name occurs twice.
std::vector<ReferenceEvent> reference_events_in(TimetableFile const& file);
std::vector<TimetableGroup> groups_in(TimetableFile const& file);
std::vector<TimetableActivity> activities_in(TimetableFile const& file);

}  // namespace pedflux::engine

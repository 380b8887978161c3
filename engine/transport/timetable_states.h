#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/enumerations.h"
#include "engine/model/state.h"

#include <pedflux/timetables.h>

#include <optional>
#include <string>
#include <string_view>

/// The state of timetables: see engine/model/state.h for how a state lists its fields.
namespace pedflux::engine {

PEDFLUX_NAMES(TimetableFileType, {{TimetableFileType::REFERENCE_EVENTS, "REFERENCE_EVENTS"},
                                  {TimetableFileType::POPULATIONS, "POPULATIONS"},
                                  {TimetableFileType::ACTIVITIES, "ACTIVITIES"}});

struct TimetableFile {
    std::string name;
    std::string delimiter;  ///< one byte
    std::string data;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("fileName", self.name);
        field("delimiter", self.delimiter);
        field("data", self.data);
    }
};

struct TimetableState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TIMETABLE;
    static constexpr std::string_view NAME = "Timetable";
    using Handle = Timetable;

    std::optional<std::string> base_path;
    std::optional<TimetableFile> reference_events;
    std::optional<TimetableFile> populations;
    std::optional<TimetableFile> activities;
    std::optional<GlobalId> default_profile;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("basePath", self.base_path);
        field("referenceEvents", self.reference_events);
        field("populations", self.populations);
        field("activities", self.activities);
        field("defaultProfile", self.default_profile, a_profile);
    }
    /// Throws Exception unless the data of each file are a table of its type.
    static void check(TimetableState const& self);
};

}  // namespace pedflux::engine

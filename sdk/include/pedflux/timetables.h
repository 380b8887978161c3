#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

namespace engine {
struct TripAccess;
struct TripPath;
}  // namespace engine

/// The moment at a place from which, or until which, a trip counts.
enum class TripBoundaryMethod : int {
    ENTER = 0,  ///< when the person comes to the place
    EXIT = 1,   ///< when the person leaves it
};

/// A way through the network by the places that it leads over, in this order: where it starts, what lies between, where
/// it ends. A person makes the trip by visiting them one after the other, whatever it crosses between them. A trip
/// never changes.
///
/// Start and end can be the same place: from its `ENTER` to its `EXIT` the trip is the stay there.
class PEDFLUX_API Trip {
  public:
    /// @param nodes floors, connections, portals or zones; at least one. One alone is both start and end.
    /// @throws Exception for an empty list and for an invalid identifier
    Trip(std::vector<GlobalId> const& nodes, TripBoundaryMethod startType, TripBoundaryMethod endType);
    /// The trip from one place to another by any way.
    /// @throws Exception for an invalid identifier
    Trip(GlobalId start, GlobalId end, TripBoundaryMethod startType, TripBoundaryMethod endType);
    ~Trip();
    Trip(Trip const&) = delete;
    Trip& operator=(Trip const&) = delete;

    /// The places of the trip, the start first and the end last.
    std::vector<GlobalId> GetNodeGlobalIds();
    TripBoundaryMethod GetStartNodeType();
    TripBoundaryMethod GetEndNodeType();

  private:
    friend engine::TripAccess;
    explicit Trip(engine::TripPath path);

    std::unique_ptr<engine::TripPath const> const path_;
};

/// The files of a timetable. Each is a table: a first line with the names of the columns in any order, then one line
/// for each entry. Further columns are ignored.
enum class TimetableFileType : int {
    /// Reference times, such as departures: `name`, each once; `time` of day as 8:05 or 08:05:30.
    REFERENCE_EVENTS = 0,
    /// The groups of people: `group`, each once; `count` of persons; `origin`, the name of the place that they come
    /// from; and `profile`, the name of their profile. Without a profile, or without that column, the default profile
    /// holds.
    POPULATIONS = 1,
    /// Where each group is and when: `group`; `event`, the reference event; `offset`, seconds after it, or before it
    /// when negative; `place`, the name of the place; `duration` of the stay in seconds.
    ACTIVITIES = 2,
};

/// What groups of people do in the course of a day, from files.
///
/// The data are read and checked when a file is set, and stay with the project then: later changes of the file do not
/// reach it. Names of groups, events, places and profiles are only looked up by a simulation, so that files can be set
/// in any order.
class PEDFLUX_API Timetable : public SimObject {
  public:
    using SimObject::SimObject;

    bool HasBasePath();
    /// The directory that file names start from.
    /// @throws Exception when none is set; names start at the project's working directory then
    std::string GetBasePath();
    /// @param path starts at the project's working directory unless it is absolute; an empty one takes it away
    void SetBasePath(std::string path);

    /// The text of the file; empty when none is set.
    std::string GetData(TimetableFileType type);
    /// The name under which the file was set; empty when none is set.
    std::string GetFileName(TimetableFileType type);
    /// Reads a table of values separated by a delimiter (RFC 4180) in UTF-8. A field that holds the delimiter, a
    /// quotation mark or a line break stands in quotation marks, with those in it doubled. Spaces about a field are
    /// left out, and so are empty lines.
    /// @param path of the file, from the base path
    /// @param delimiter such as ',', ';' or a tab; no letter, digit, space or quotation mark
    /// @throws Exception for a file that cannot be read or is no such table, with the line and column of what is wrong
    void SetDataFromFile(TimetableFileType type, std::string const& path, char delimiter);

    /// The reference events in the order of their file.
    std::vector<std::string> GetReferenceEventNames();

    /// The profile of groups for which the files name none; invalid when none is set.
    GlobalId GetDefaultProfile();
    /// An invalid identifier takes the profile away.
    void SetDefaultProfile(GlobalId const& profile);
};

}  // namespace pedflux

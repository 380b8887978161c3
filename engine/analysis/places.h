#pragma once

#include "engine/base/identifiers.h"
#include "engine/behaviour/area.h"
#include "engine/results/run_reader.h"

#include <pedflux/identifiers.h>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pedflux::engine {

class Document;

/// An object of the project as an area of a stored run.
struct RunPlace {
    std::string name;
    Area area;
};

/// The places of a stored run. Surfaces and portals are those of the run, zones those of the project.
class RunPlaces {
  public:
    RunPlaces(Document const& document, RunReader const& reader);

    /// A floor, connection, zone or portal. Parts of it that did not take part in the run are left out. Throws
    /// Exception for another identifier.
    RunPlace operator[](GlobalId const& object) const;
    /// All surfaces of the run.
    RunPlace everywhere() const;

    RunReader const& reader() const { return reader_; }
    /// The number of an object where somebody entered or left the simulation; none for others.
    std::optional<std::uint32_t> portal(GlobalId const& object) const;
    /// Whether a surface is a link, stair or ramp.
    bool is_connection(SurfaceIndex surface) const { return connections_[surface]; }

  private:
    Document const& document_;
    RunReader const& reader_;
    SurfaceTable surfaces_;
    std::vector<bool> connections_;
    std::unordered_map<GlobalId, std::uint32_t, GlobalIdHash, GlobalIdEqual> portals_;
};

}  // namespace pedflux::engine

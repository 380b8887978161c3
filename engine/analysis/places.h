#pragma once

#include "engine/results/run_reader.h"

#include <pedflux/identifiers.h>

#include <cstdint>
#include <string>
#include <vector>

namespace pedflux::engine {

class Document;

/// An object of the project as a place in a stored run: a set of the surfaces there, or a portal, which has none.
struct RunPlace {
    GlobalId id;
    std::string name;
    std::vector<bool> surfaces;

    bool has(std::uint16_t surface) const { return surfaces[surface]; }
};

/// A floor, connection, zone or portal. Parts of it that did not take part in the run are left out. Throws Exception
/// for another identifier.
RunPlace place_of(Document const& document, RunReader const& reader, GlobalId const& id);

/// All surfaces of the run.
RunPlace everywhere(RunReader const& reader);

}  // namespace pedflux::engine

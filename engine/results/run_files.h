#pragma once

#include <pedflux/identifiers.h>

#include <memory>
#include <string>

namespace pedflux::engine {

class Document;
class RunReader;

/// The file that a name in the project means: relative names start at its working directory.
std::string file_of(Document const& document, std::string const& name);

/// The results of a simulation run of the project. Throws Exception when there is no such run or it has no results.
std::shared_ptr<RunReader> results_of(Document const& document, GlobalId const& run);

}  // namespace pedflux::engine

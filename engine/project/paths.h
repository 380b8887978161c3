#pragma once

#include <string>

namespace pedflux::engine {

class Document;

/// The project's working directory: the one that was set, or that of the process.
std::string working_directory_of(Document const& document);

/// The file that a name in the project means: relative names start at its working directory.
std::string from_working_directory(Document const& document, std::string const& name);

/// The directory of a file, as an absolute path.
std::string directory_of(std::string const& path);

/// An existing directory as an absolute path. Throws Exception when it is none.
std::string require_directory(std::string const& path);

}  // namespace pedflux::engine

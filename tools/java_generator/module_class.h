#pragma once

#include "tools/java_generator/surface.h"

#include <string>
#include <vector>

namespace pedflux::java {

/// The source of pedfluxJNI: every native method.
std::string module_class(std::vector<manifest::Export> const& exports, Surface const& surface);

/// The source of ReleaseTable: which native method releases the handles of each class.
std::string release_table(Surface const& surface);

/// The name of a class's row in that table.
std::string release_row(std::string const& class_name);

}  // namespace pedflux::java

#pragma once

#include "tools/java_generator/documentation.h"
#include "tools/java_generator/surface.h"

#include <string>

namespace pedflux::java {

/// One page with every class, method and enumeration, and a field to search in them.
std::string reference_page(Surface const& surface, Names const& names);

}  // namespace pedflux::java

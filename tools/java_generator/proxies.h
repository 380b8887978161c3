#pragma once

#include "tools/java_generator/documentation.h"
#include "tools/java_generator/surface.h"

#include <string>

namespace pedflux::java {

/// The source of a class's proxy.
std::string proxy(Class const& of, Surface const& surface, Names const& names);

/// The source of the Java enumeration for one of the SDK's.
std::string enumeration(std::string const& name, Enumeration const& declared, Names const& names);

/// A method as Java programmers see it: "Vec3d rotatedBy(double angle)".
std::string java_signature(Method const& method);

}  // namespace pedflux::java

#pragma once

#include "bindings/table.h"

#include <pedflux/project.h>

/// What a project offers for a kind of object.

/// The lookups of a kind of object, by identifier and by name, and the list of all.
#define BASE_OF_KINDS(Kind, Kinds)                                 \
    OVERLOAD(Project, get##Kind, 0, Get##Kind, GlobalId const&)    \
    OVERLOAD(Project, get##Kind, 1, Get##Kind, std::string const&) \
    GET(Project, Kinds)
/// The same and the factory.
#define KIND(Kind, Kinds) \
    CREATE(Project, Kind) \
    BASE_OF_KINDS(Kind, Kinds)

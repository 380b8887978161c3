#pragma once

// What every table of exports includes, compiled once.

#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#pragma once

// What most sources of the engine include, compiled once.

#include <pedflux/color.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include <fmt/format.h>

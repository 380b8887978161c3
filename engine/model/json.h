#pragma once

#include <nlohmann/json.hpp>
#include <nlohmann/json_fwd.hpp>

namespace pedflux::engine {

/// Written fields keep their order, so that files are alike where projects are.
using Json = nlohmann::ordered_json;

}  // namespace pedflux::engine

#pragma once

#include <nlohmann/json_fwd.hpp>

namespace pedflux::engine {

/// Members keep their order, so that files are alike where projects are. The type is incomplete here: only the few
/// sources that read or write project files include <nlohmann/json.hpp>, which takes seconds to compile.
using Json = nlohmann::ordered_json;

}  // namespace pedflux::engine

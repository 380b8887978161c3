#pragma once

#include "engine/model/json.h"

#include <pedflux/issue.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pedflux::engine {

/// The state of reading a project file: the place in the file, and the list that warnings go to.
struct Reading {
    std::vector<Issue>& warnings;
    std::string where;

    /// Throws Exception: <where> must be <expected>, not <found>.
    [[noreturn]] void refuse(std::string_view expected, Json const& found) const;
    void warn(std::string const& summary);
};

/// Extends `where` by one level for the lifetime of the object.
class Step {
  public:
    Step(Reading& reading, std::string_view name) : reading_(reading), length_(reading.where.size()) {
        reading.where.append(reading.where.empty() ? "" : ".").append(name);
    }
    Step(Step const&) = delete;
    Step& operator=(Step const&) = delete;
    ~Step() { reading_.where.resize(length_); }

  private:
    Reading& reading_;
    std::size_t length_;
};

}  // namespace pedflux::engine

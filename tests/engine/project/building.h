#pragma once

#include "tests/engine/geometry/expect.h"

#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/geometry.h>
#include <pedflux/graph_queries.h>
#include <pedflux/issue.h>
#include <pedflux/map_queries.h>
#include <pedflux/population_sources.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/selection.h>
#include <pedflux/simulation_run.h>
#include <pedflux/time_range.h>
#include <pedflux/transform.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace pedflux::engine {

/// A directory of its own that is gone after the test.
class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "pedflux-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
        path_ = pattern;
    }
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    std::string file(std::string const& name) const { return (path_ / name).string(); }
    std::filesystem::path const& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

inline std::string contents_of(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void write(std::string const& path, std::string const& contents) {
    std::ofstream(path, std::ios::binary) << contents;
}

/// A floor's mesh: a level rectangle of the plan.
inline std::shared_ptr<MeshGeometry> slab(double x, double z, double width, double depth, double y = 0) {
    return MeshGeometry::CreateFlatPolygon(y, {{x, z}, {x + width, z}, {x + width, z + depth}, {x, z + depth}});
}

/// A project with an object of every kind, in which every property has a value that it does not have by itself.
std::shared_ptr<Project> full_project();

}  // namespace pedflux::engine

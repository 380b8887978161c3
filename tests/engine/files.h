#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <stdlib.h>

namespace pedflux {

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

}  // namespace pedflux

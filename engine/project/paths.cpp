#include "engine/project/paths.h"

#include "engine/model/document.h"

#include <pedflux/exception.h>

#include <filesystem>
#include <system_error>

#include <fmt/format.h>

namespace pedflux::engine {

namespace fs = std::filesystem;

namespace {

fs::path absolute(fs::path const& path) {
    std::error_code error;
    auto const whole = fs::absolute(path, error);
    if (error) throw Exception(fmt::format("cannot tell where '{}' is: {}", path.string(), error.message()));
    return whole.lexically_normal();
}

}  // namespace

std::string working_directory_of(Document const& document) {
    return document.working_directory.empty() ? absolute(".").parent_path().string() : document.working_directory;
}

std::string from_working_directory(Document const& document, std::string const& name) {
    return (fs::path(working_directory_of(document)) / name).string();
}

std::string directory_of(std::string const& path) { return absolute(path).parent_path().string(); }

std::string require_directory(std::string const& path) {
    std::error_code error;
    if (!fs::is_directory(path, error)) {
        throw Exception(fmt::format("the project: workingDirectory must be an existing directory, not '{}'", path));
    }
    auto whole = absolute(path);
    return (whole.has_filename() ? whole : whole.parent_path()).string();
}

}  // namespace pedflux::engine

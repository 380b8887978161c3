#include "engine/base/checks.h"
#include "engine/base/log.h"

#include <pedflux/sdk.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <system_error>

#include <fmt/format.h>

namespace pedflux {

namespace {

struct Paths {
    std::string install;
    std::string avatars;
    std::string fonts;
};

struct GuardedPaths {
    std::mutex mutex;
    Paths paths;
};

constinit std::atomic<LogOutputLevel> output_level = LogOutputLevel::WARNINGS;
constinit std::atomic<bool> feature_logging = false;

/// Never destroyed, since threads of the caller may outlive the end of main.
GuardedPaths& guarded_paths() {
    static auto& guarded = *new GuardedPaths();
    return guarded;
}

template <class Access>
auto with_paths(Access access) {
    std::lock_guard const lock(guarded_paths().mutex);
    return access(guarded_paths().paths);
}

std::string set_or_installed(Paths const& paths, std::string const& path, char const* folder) {
    if (!path.empty() || paths.install.empty()) return path;
    return (std::filesystem::path(paths.install) / folder).string();
}

}  // namespace

bool Sdk::Init() { return true; }
void Sdk::Fini() {}
bool Sdk::IsEmbedded() { return true; }

std::string Sdk::GetInstallPath() {
    return with_paths([](Paths const& paths) { return paths.install; });
}

bool Sdk::SetInstallPath(std::string const& path) {
    std::error_code failure;
    if (!std::filesystem::is_directory(path, failure)) return false;
    with_paths([&path](Paths& paths) { paths.install = path; });
    return true;
}

std::string Sdk::GetAvatarsPath() {
    return with_paths([](Paths const& paths) { return set_or_installed(paths, paths.avatars, "avatars"); });
}

void Sdk::SetAvatarsPath(std::string const& path) {
    with_paths([&path](Paths& paths) { paths.avatars = path; });
}

std::string Sdk::GetFontsPath() {
    return with_paths([](Paths const& paths) { return set_or_installed(paths, paths.fonts, "fonts"); });
}

void Sdk::SetFontsPath(std::string const& path) {
    with_paths([&path](Paths& paths) { paths.fonts = path; });
}

bool Sdk::IsFeatureLoggingEnabled() { return feature_logging; }
void Sdk::SetFeatureLoggingEnabled(bool enabled) { feature_logging = enabled; }

void Sdk::SetOutputLevel(LogOutputLevel level) {
    if (level < LogOutputLevel::NONE || level > LogOutputLevel::DETAILS)
        engine::refuse(
            fmt::format("output level is {}; it must be from 0 (NONE) to 4 (DETAILS)", static_cast<int>(level)));
    output_level = level;
}

void engine::log(LogOutputLevel level, std::string_view line) {
    if (level > output_level.load()) return;
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace pedflux

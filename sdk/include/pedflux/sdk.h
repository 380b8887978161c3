#pragma once

#include <pedflux/api.h>

#include <string>

namespace pedflux {

/// How much the SDK writes to the standard error stream. Each level includes those before it.
enum class LogOutputLevel : int {
    /// Nothing.
    NONE = 0,
    /// What failed and was not reported by an Exception.
    ERRORS = 1,
    /// What succeeded but deserves a look. The level after start-up.
    WARNINGS = 2,
    /// What happens, in a few lines.
    MESSAGES = 3,
    /// What happens, in detail.
    DETAILS = 4,
};

/// Start-up and process-wide settings. All operations are static and may be called from any thread.
class PEDFLUX_API Sdk {
  public:
    /// Starts the SDK and tells whether it is ready. Calls may be nested and repeated: the embedded engine has nothing
    /// to start and nothing to stop.
    static bool Init();
    /// Ends the SDK. Handles that are still in use stay valid, and Init may follow.
    static void Fini();
    /// Whether the SDK runs inside the calling process alone, needing no installed program: true for this engine.
    static bool IsEmbedded();

    /// The directory that the SDK's resources are looked for in; empty until it is set.
    static std::string GetInstallPath();
    /// Sets the directory and returns true if there is one; otherwise returns false and keeps the former.
    static bool SetInstallPath(std::string const& path);
    /// The directory of the avatars: the one set, or else "avatars" in the install path if that is set.
    static std::string GetAvatarsPath();
    /// An empty path restores the default.
    static void SetAvatarsPath(std::string const& path);
    /// The directory of the fonts: the one set, or else "fonts" in the install path if that is set.
    static std::string GetFontsPath();
    /// An empty path restores the default.
    static void SetFontsPath(std::string const& path);

    /// Whether the use of features is to be logged. The embedded engine keeps the setting and logs no features.
    static bool IsFeatureLoggingEnabled();
    static void SetFeatureLoggingEnabled(bool enabled);
    /// Throws Exception for a number that is no level.
    static void SetOutputLevel(LogOutputLevel level);
};

}  // namespace pedflux

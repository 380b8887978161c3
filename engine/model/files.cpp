#include "engine/model/files.h"

#include <pedflux/exception.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pedflux::engine {

namespace {

constexpr off_t largest_file = off_t{1} << 30;

[[noreturn]] void fail(std::string const& what, std::string const& path, int error = errno) {
    throw Exception(fmt::format("cannot {} '{}': {}", what, path, std::generic_category().message(error)));
}

/// A file descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    int number() const { return number_; }
    /// Whether closing, which can report what writing did not, went well.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

/// A temporary file that is deleted unless it was put into place.
class Draft {
  public:
    explicit Draft(std::string const& target) : path_(target + ".XXXXXX"), file_(::mkostemp(path_.data(), O_CLOEXEC)) {
        if (file_.number() < 0) fail("write beside", target);
    }
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    ~Draft() {
        if (!placed_) ::unlink(path_.c_str());
    }

    void write(std::string_view contents, std::string const& target) {
        while (!contents.empty()) {
            auto const written = ::write(file_.number(), contents.data(), contents.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail("write", target);
            contents.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    void place(std::string const& target, mode_t mode) {
        if (::fchmod(file_.number(), mode) != 0 || ::fsync(file_.number()) != 0 || !file_.close())
            fail("write", target);
        if (::rename(path_.c_str(), target.c_str()) != 0) fail("write", target);
        placed_ = true;
    }

  private:
    std::string path_;
    Descriptor file_;
    bool placed_ = false;
};

/// The permissions of the file that is replaced, or the default ones of a new file.
mode_t mode_for(std::string const& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
    mode_t const mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void require_path(std::string const& path, std::string const& what) {
    if (path.empty()) throw Exception(fmt::format("cannot {}: the file name is empty", what));
    if (path.find('\0') != std::string::npos)
        throw Exception(fmt::format("cannot {}: the file name holds a zero byte", what));
}

}  // namespace

std::string read_file(std::string const& path) {
    require_path(path, "read a file");
    Descriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0) fail("read", path);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) fail("read", path);
    if (!S_ISREG(status.st_mode)) throw Exception(fmt::format("cannot read '{}': it is not a file", path));
    if (status.st_size > largest_file) throw Exception(fmt::format("cannot read '{}': it is larger than 1 GiB", path));

    std::string contents(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        auto const got = ::read(file.number(), contents.data() + filled, contents.size() - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail("read", path);
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    contents.resize(filled);
    return contents;
}

void replace_file(std::string const& path, std::string_view contents) {
    require_path(path, "write a file");
    // A link stays a link: the file that it points to is replaced.
    std::error_code ignored;
    auto const resolved = std::filesystem::canonical(path, ignored);
    std::string const target = ignored ? path : resolved.string();
    if (std::filesystem::is_directory(target, ignored)) fail("write", path, EISDIR);

    Draft draft(target);
    draft.write(contents, path);
    draft.place(target, mode_for(target));

    // The new name is on the disk only when its directory is. Some file systems cannot flush directories.
    auto const directory = std::filesystem::path(target).parent_path();
    Descriptor const entry(::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (entry.number() >= 0 && ::fsync(entry.number()) != 0 && errno != EINVAL) fail("flush the directory of", path);
}

}  // namespace pedflux::engine

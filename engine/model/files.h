#pragma once

#include <string>
#include <string_view>

namespace pedflux::engine {

/// The whole of a file. Throws Exception, which names the file and the reason, when it cannot be read or is larger than
/// 1 GiB.
std::string read_file(std::string const& path);

/// Gives a file its new contents at once: they are written beside it, flushed to the disk and put in its place. When
/// that fails, Exception names the file and the reason, and what was there stays as it was.
void replace_file(std::string const& path, std::string_view contents);

}  // namespace pedflux::engine

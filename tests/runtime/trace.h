#pragma once

#include <sstream>
#include <string>
#include <vector>

/// What happens during a call of the bridge, in order: one line for each JNI function and each SDK operation.
namespace pedflux::jni::test {

using Trace = std::vector<std::string>;

void add_to_trace(std::string const& line);

/// The lines since the last call of this.
Trace take_trace();

template <class... Parts>
std::string joined(Parts const&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

inline Trace operator+(Trace first, Trace const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

}  // namespace pedflux::jni::test

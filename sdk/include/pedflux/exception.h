#pragma once

#include <pedflux/api.h>

#include <string>
#include <utility>

namespace pedflux {

/// The only exception that the SDK throws. Its message says what was wrong and what would be right.
class PEDFLUX_API Exception {
  public:
    /// An exception with the given message, in UTF-8.
    explicit Exception(std::string const& message) : message_(message) {}
    Exception(Exception const&) = default;
    Exception& operator=(Exception const&) = default;
    virtual ~Exception();

    /// The message, in UTF-8.
    std::string GetMessage() const { return message_; }

  private:
    std::string message_;
};

}  // namespace pedflux

#pragma once

#include <pedflux/api.h>

#include <memory>
#include <string>

namespace pedflux {

namespace engine {
struct Identifier;
}

/// The identifier of a project object: 128 bits, random where the SDK makes it. Copies share the bits, so a copy costs
/// one atomic count.
class PEDFLUX_API GlobalId {
  public:
    /// Names no object; the same as `GlobalId()`.
    static GlobalId const INVALID;

    /// An identifier that names no object.
    constexpr GlobalId() = default;
    /// The identifier written as 32 hexadecimal digits in groups of 8-4-4-4-12
    /// ("8f14e45f-ceea-467f-a0e5-95c0d4a5c7d2"), in lower or upper case. Throws Exception for any other text, and for
    /// one of zeros only.
    explicit GlobalId(std::string const& text);

    /// A new identifier with 122 random bits of the operating system's source, marked as a random one (RFC 4122,
    /// version 4). Identifiers made in different processes, or after a fork, differ.
    static GlobalId Generate();

    /// The textual form, in lower case; empty for an identifier that names no object.
    std::string GetString();
    bool IsValid() const;

    bool InternalEquals(GlobalId const& other) const;
    int InternalHashCode() const;
    /// Negative, 0 or positive as this identifier comes before the other, equals it or comes after it, in the order of
    /// the textual forms.
    int InternalCompare(GlobalId const& other) const;

  private:
    explicit GlobalId(std::shared_ptr<engine::Identifier const> identifier);

    std::shared_ptr<engine::Identifier const> identifier_;
};

}  // namespace pedflux

#pragma once

#include <pedflux/exception.h>

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Expects an Exception whose message contains the given text.
#define EXPECT_REFUSED(statement, text)                                \
    try {                                                              \
        static_cast<void>(statement);                                  \
        ADD_FAILURE() << #statement << " was accepted";                \
    } catch (pedflux::Exception const& refusal) {                      \
        EXPECT_THAT(refusal.GetMessage(), ::testing::HasSubstr(text)); \
    }

namespace pedflux {

/// What `refusal_of` says of an action that nobody refuses.
inline constexpr char NOTHING_REFUSED[] = "nothing was refused";

/// The message of the Exception that an action ends in.
template <class Action>
std::string refusal_of(Action const& action) {
    try {
        action();
    } catch (Exception const& exception) {
        return exception.GetMessage();
    }
    return NOTHING_REFUSED;
}

}  // namespace pedflux

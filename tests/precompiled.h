#pragma once

// What the tests include, compiled once.

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// A macro of gmock that no test uses. The table of agent actions has one of the same name.
#undef ACTION

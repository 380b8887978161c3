#pragma once

#include "engine/model/enumerations.h"

#include <pedflux/conditions.h>

namespace pedflux::engine {

PEDFLUX_NAMES(ComparisonType, {{ComparisonType::LESS_THAN, "LESS_THAN"},
                               {ComparisonType::LESS_THAN_OR_EQUAL, "LESS_THAN_OR_EQUAL"},
                               {ComparisonType::EQUAL, "EQUAL"},
                               {ComparisonType::NOT_EQUAL, "NOT_EQUAL"},
                               {ComparisonType::GREATER_THAN_OR_EQUAL, "GREATER_THAN_OR_EQUAL"},
                               {ComparisonType::GREATER_THAN, "GREATER_THAN"}});
PEDFLUX_NAMES(EventStateActivity, {{EventStateActivity::ACTIVE, "ACTIVE"}, {EventStateActivity::INACTIVE, "INACTIVE"}});
PEDFLUX_NAMES(GateStateDirection, {{GateStateDirection::BOTH_WAYS, "BOTH_WAYS"},
                                   {GateStateDirection::BALL_TO_BOX, "BALL_TO_BOX"},
                                   {GateStateDirection::BOX_TO_BALL, "BOX_TO_BALL"},
                                   {GateStateDirection::EITHER_WAY, "EITHER_WAY"}});
PEDFLUX_NAMES(AgentAccess, {{AgentAccess::OPEN, "OPEN"}, {AgentAccess::CLOSED, "CLOSED"}});
PEDFLUX_NAMES(ServerAccessPoint, {{ServerAccessPoint::ENTRANCE_AND_EXIT, "ENTRANCE_AND_EXIT"},
                                  {ServerAccessPoint::ENTRANCE, "ENTRANCE"},
                                  {ServerAccessPoint::EXIT, "EXIT"}});

/// Whether two numbers compare as asked.
template <class Number>
constexpr bool compares(Number left, ComparisonType comparison, Number right) {
    switch (comparison) {
        case ComparisonType::LESS_THAN:
            return left < right;
        case ComparisonType::LESS_THAN_OR_EQUAL:
            return left <= right;
        case ComparisonType::EQUAL:
            return left == right;
        case ComparisonType::NOT_EQUAL:
            return left != right;
        case ComparisonType::GREATER_THAN_OR_EQUAL:
            return left >= right;
        case ComparisonType::GREATER_THAN:
            return left > right;
    }
    return false;
}

}  // namespace pedflux::engine

#pragma once

/// Conditions that triggers, tests and access rules share.
namespace pedflux {

/// How two numbers are compared, the first one on the left.
enum class ComparisonType : int {
    LESS_THAN = 0,
    LESS_THAN_OR_EQUAL = 1,
    EQUAL = 2,
    NOT_EQUAL = 3,
    GREATER_THAN_OR_EQUAL = 4,
    GREATER_THAN = 5,
};

/// What is asked about an event.
enum class EventStateActivity : int {
    ACTIVE = 0,    ///< it has started and has not ended
    INACTIVE = 1,  ///< it has not started yet, or has ended
};

/// The ways through a gate that are asked about. The two ends of a connection are called ball and box.
enum class GateStateDirection : int {
    BOTH_WAYS = 0,    ///< each of the two ways
    BALL_TO_BOX = 1,  ///< whatever the way back
    BOX_TO_BALL = 2,  ///< whatever the way forth
    EITHER_WAY = 3,   ///< at least one of the two ways
};

/// Whether agents are let through. A gate or server that is open only to agents that pass a test counts as open.
enum class AgentAccess : int {
    OPEN = 0,
    CLOSED = 1,
};

/// Where a server lets agents through.
enum class ServerAccessPoint : int {
    ENTRANCE_AND_EXIT = 0,  ///< both of them
    ENTRANCE = 1,           ///< where agents come to be served
    EXIT = 2,               ///< where agents leave once they are served
};

}  // namespace pedflux

#pragma once

#include "runtime/handles.h"

/// The SDK classes that cross by value; all others are shared.
#define PEDFLUX_VALUE_CLASSES(X) \
    X(AgentData)                 \
    X(AgentRequest)              \
    X(AvailableSpace)            \
    X(Axis3d)                    \
    X(BoundingBox3d)             \
    X(BoundingSphere3d)          \
    X(Color)                     \
    X(DurationValuePair)         \
    X(ElevatorCall)              \
    X(ElevatorService)           \
    X(ElevatorStop)              \
    X(Exception)                 \
    X(FrameSummary)              \
    X(GlobalId)                  \
    X(IdValuePair)               \
    X(Issue)                     \
    X(LevelOfService)            \
    X(LineSeg3d)                 \
    X(MovieOptions)              \
    X(PixelColor)                \
    X(PixelValue)                \
    X(Sdk)                       \
    X(SimulationOptions)         \
    X(Tri3d)                     \
    X(Vec2d)                     \
    X(Vec3d)

#define PEDFLUX_VALUE_CLASS(Class) \
    namespace pedflux {            \
    class Class;                   \
    }                              \
    template <>                    \
    inline constexpr bool pedflux::jni::crosses_by_value<pedflux::Class> = true;
PEDFLUX_VALUE_CLASSES(PEDFLUX_VALUE_CLASS)
#undef PEDFLUX_VALUE_CLASS

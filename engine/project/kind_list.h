#pragma once

/// The names of all kinds of objects, each with its state's name before "State", in the order of the alphabet. The
/// tables of kinds instantiate them.
#define PEDFLUX_KINDS(KIND)             \
    KIND(AgentActionObject)             \
    KIND(AgentCountMapQuery)            \
    KIND(AgentFilterObject)             \
    KIND(AgentTestObject)               \
    KIND(Avatar)                        \
    KIND(AverageDensityMapQuery)        \
    KIND(Barrier)                       \
    KIND(Billboard)                     \
    KIND(Bookmark)                      \
    KIND(Broadcast)                     \
    KIND(Circulate)                     \
    KIND(Collection)                    \
    KIND(Cordon)                        \
    KIND(Dispatch)                      \
    KIND(Elevator)                      \
    KIND(ElevatorBank)                  \
    KIND(Escalator)                     \
    KIND(Evacuation)                    \
    KIND(ExperiencedDensityMapQuery)    \
    KIND(Floor)                         \
    KIND(GateAccess)                    \
    KIND(InstantaneousDensityMapQuery)  \
    KIND(Journey)                       \
    KIND(Link)                          \
    KIND(MaxDensityMapQuery)            \
    KIND(NetworkOfObjects)              \
    KIND(NonZeroAverageDensityMapQuery) \
    KIND(Path)                          \
    KIND(Perimeter)                     \
    KIND(PopulationCountGraphQuery)     \
    KIND(Portal)                        \
    KIND(Profile)                       \
    KIND(Ramp)                          \
    KIND(RouteBank)                     \
    KIND(Server)                        \
    KIND(ServerAccess)                  \
    KIND(SimulationRun)                 \
    KIND(Stair)                         \
    KIND(TallyChange)                   \
    KIND(TallyObject)                   \
    KIND(TimeObject)                    \
    KIND(Token)                         \
    KIND(Timetable)                     \
    KIND(Transform)                     \
    KIND(TriggerObject)                 \
    KIND(Vehicle)                       \
    KIND(Visual)                        \
    KIND(Volume)                        \
    KIND(WaitSpace)                     \
    KIND(Zone)

#pragma once

/// Every kind of object that a project can hold, queries aside, one line each: the class, its plural and the form of
/// its factory (kind_table.h). The kind itself, the factory, the lookups and the list of the project follow from the
/// line. scene_kinds.cpp and its like define each table.

#define PEDFLUX_SCENE_KINDS(KIND)                                           \
    KIND(Floor, Floors, FROM_MESH)                                          \
    KIND(Portal, Portals, FROM_MESH)                                        \
    KIND(Link, Links, FROM_MESH)                                            \
    KIND(Stair, Stairs, FROM_MESH)                                          \
    KIND(Ramp, Ramps, FROM_MESH)                                            \
    KIND(Escalator, Escalators, FROM_MESH)                                  \
    KIND(Path, Paths, FROM_GEOMETRY, PolylineGeometry)                      \
    KIND(Barrier, Barriers, FROM_MESH)                                      \
    KIND(Server, Servers, FROM_GEOMETRY, PolylineGeometry)                  \
    KIND(Cordon, Cordons, FROM_MESH)                                        \
    KIND(WaitSpace, WaitSpaces, FROM_MESH)                                  \
    KIND(Volume, Volumes, FROM_MESH)                                        \
    KIND(Zone, Zones, FROM_FIELD, std::vector<GlobalId>, base_members)      \
    KIND(Collection, Collections, FROM_FIELD, std::vector<GlobalId>, items) \
    KIND(Perimeter, Perimeters, NAMED)                                      \
    KIND(RouteBank, RouteBanks, NAMED)                                      \
    KIND(Transform, Transforms, NAMED)                                      \
    KIND(Network, Networks, NAMED)

#define PEDFLUX_PEOPLE_KINDS(KIND) \
    KIND(Profile, Profiles, NAMED) \
    KIND(Avatar, Avatars, BY_HAND)

#define PEDFLUX_PRESENTATION_KINDS(KIND)                          \
    KIND(Visual, Visuals, FROM_MESH)                              \
    KIND(Billboard, Billboards, FROM_GEOMETRY, RectangleGeometry) \
    KIND(Bookmark, Bookmarks, NAMED)

#define PEDFLUX_EVENT_KINDS(KIND)                           \
    KIND(Journey, Journeys, NAMED)                          \
    KIND(Evacuation, Evacuations, NAMED)                    \
    KIND(Circulate, Circulates, NAMED)                      \
    KIND(Broadcast, Broadcasts, NAMED)                      \
    KIND(Dispatch, Dispatches, FROM_FIELD, Vec3d, position) \
    KIND(AgentActionObject, AgentActionObjects, NAMED)

#define PEDFLUX_AGENT_RULE_KINDS(KIND)                 \
    KIND(AgentFilterObject, AgentFilterObjects, NAMED) \
    KIND(AgentTestObject, AgentTestObjects, NAMED)

#define PEDFLUX_TIME_RULE_KINDS(KIND)          \
    KIND(TimeObject, TimeObjects, NAMED)       \
    KIND(TriggerObject, TriggerObjects, NAMED) \
    KIND(GateAccess, GateAccesses, NAMED)      \
    KIND(ServerAccess, ServerAccesses, NAMED)  \
    KIND(Token, Tokens, NAMED)

#define PEDFLUX_TALLY_KINDS(KIND)          \
    KIND(TallyChange, TallyChanges, NAMED) \
    KIND(TallyObject, TallyObjects, NAMED)

#define PEDFLUX_TRANSPORT_KINDS(KIND)        \
    KIND(Elevator, Elevators, FROM_MESH)     \
    KIND(ElevatorBank, ElevatorBanks, NAMED) \
    KIND(Timetable, Timetables, NAMED)       \
    KIND(Vehicle, Vehicles, NAMED)

#define PEDFLUX_RUN_KINDS(KIND) KIND(SimulationRun, SimulationRuns, NAMED)

/// All of them. The queries are listed in engine/analysis.
#define PEDFLUX_OBJECT_KINDS(KIND)   \
    PEDFLUX_SCENE_KINDS(KIND)        \
    PEDFLUX_PEOPLE_KINDS(KIND)       \
    PEDFLUX_PRESENTATION_KINDS(KIND) \
    PEDFLUX_EVENT_KINDS(KIND)        \
    PEDFLUX_AGENT_RULE_KINDS(KIND)   \
    PEDFLUX_TIME_RULE_KINDS(KIND)    \
    PEDFLUX_TALLY_KINDS(KIND)        \
    PEDFLUX_TRANSPORT_KINDS(KIND)    \
    PEDFLUX_RUN_KINDS(KIND)

#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/timetables.h>

namespace pedflux::jni {

CLASS(Timetable, SimObject)
PROPERTY(Timetable, BasePath)
HAS(Timetable, BasePath)
GET(Timetable, Data)
GET(Timetable, FileName)
SET(Timetable, DataFromFile)
GET(Timetable, ReferenceEventNames)
PROPERTY(Timetable, DefaultProfile)
GET(Timetable, TypeId)

CLASS(Trip)
CONSTRUCTOR_OVERLOAD(Trip, 0, std::vector<GlobalId> const&, TripBoundaryMethod, TripBoundaryMethod)
CONSTRUCTOR_OVERLOAD(Trip, 1, GlobalId, GlobalId, TripBoundaryMethod, TripBoundaryMethod)
GET(Trip, NodeGlobalIds)
GET(Trip, StartNodeType)
GET(Trip, EndNodeType)

}  // namespace pedflux::jni

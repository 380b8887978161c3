#include "bindings/table.h"

#include <pedflux/simulation_run.h>

namespace pedflux::jni {

CLASS(SimulationRun, SimObject)
METHOD(SimulationRun, connect, Connect)
METHOD(SimulationRun, disconnect, Disconnect)
IS(SimulationRun, Connected)
GET(SimulationRun, DatabaseFileName)
GET(SimulationRun, TypeId)

}  // namespace pedflux::jni

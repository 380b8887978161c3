#include "bindings/table.h"

#include <pedflux/color.h>
#include <pedflux/graphs.h>
#include <pedflux/vectors.h>

namespace pedflux::jni {

CLASS(Graph)
GET(Graph, Title)
GET(Graph, XLabel)
GET(Graph, YLabel)
GET(Graph, StartTimeInSeconds)
GET(Graph, EndTimeInSeconds)
GET(Graph, Series)
METHOD(Graph, exportCsv, ExportCsv)

CLASS(Series)
GET(Series, Name)
GET(Series, Color)
GET(Series, Values)

}  // namespace pedflux::jni

#include "bindings/table.h"

#include <pedflux/tables.h>

namespace pedflux::jni {

CLASS(Table)
IS(Table, Valid)
GET(Table, RowCount)
GET(Table, ColumnCount)
GET(Table, RowLabel)
GET(Table, ColumnLabel)
GET(Table, IntValue)
GET(Table, DoubleValue)
GET(Table, StringValue)
METHOD(Table, exportCsv, ExportCsv)

}  // namespace pedflux::jni

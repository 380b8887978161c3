#include "bindings/table.h"

#include <pedflux/exception.h>

namespace pedflux::jni {

CLASS(Exception)
CONSTRUCTOR(Exception, std::string const&)
GET(Exception, Message)

}  // namespace pedflux::jni

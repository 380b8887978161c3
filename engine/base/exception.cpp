#include <pedflux/exception.h>

namespace pedflux {

Exception::~Exception() = default;

}  // namespace pedflux

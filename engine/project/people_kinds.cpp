#include "engine/behaviour/distribution_face.h"
#include "engine/model/profile_state.h"
#include "engine/project/kind_table.h"

#include <pedflux/profiles.h>

namespace pedflux {

KIND(Profile, Profiles)

}  // namespace pedflux

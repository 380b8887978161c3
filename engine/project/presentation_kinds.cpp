#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_table.h"
#include "engine/scene/presentation_states.h"

#include <pedflux/presentation.h>

namespace pedflux {

KIND_WITH_MESH(Visual, Visuals)
KIND_WITH_GEOMETRY(Billboard, Billboards, RectangleGeometry)
KIND(Bookmark, Bookmarks)

}  // namespace pedflux

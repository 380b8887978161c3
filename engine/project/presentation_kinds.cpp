#include "engine/behaviour/distribution_face.h"
#include "engine/model/presentation_states.h"
#include "engine/project/kind_table.h"

#include <pedflux/presentation.h>

namespace pedflux {

KIND_WITH_MESH(Visual, Visuals)
KIND_WITH_GEOMETRY(Billboard, Billboards, RectangleGeometry)
KIND(Bookmark, Bookmarks)

}  // namespace pedflux

#pragma once

#include <pedflux/objects.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

class Document;

/// The geometry of objects as a Wavefront OBJ file (B1 of the Advanced Visualizer's manual, 1991): one group for each
/// object with a geometry, its vertices in metres with y up, its faces as triangles and its polylines as lines. Without
/// objects, of all scene objects of the document.
std::string to_obj(Document const& document, std::vector<std::shared_ptr<SimObject>> const& objects);

}  // namespace pedflux::engine

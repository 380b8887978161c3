#pragma once

#include <pedflux/objects.h>

#include <memory>
#include <string>
#include <vector>

/// Geometry in formats that other programs read. Lengths are metres in all of them.
namespace pedflux::engine {

class Document;
struct SceneState;

using SceneObjects = std::vector<SceneState const*>;

/// Wavefront OBJ (B1 of the Advanced Visualizer's manual, 1991): one group for each object, y up, faces as triangles
/// and polylines as lines. Spaces in names become underscores, since they would end the name.
std::string to_obj(SceneObjects const& objects);

/// STL as text (3D Systems, StereoLithography Interface Specification, 1989): one solid for each mesh, y up. Polylines
/// are left out, the format has triangles only.
std::string to_stl(SceneObjects const& objects);

/// Well-known text of the plan (ISO 19125-1): a geometry collection with one element for each object, whose coordinates
/// are x and z. A mesh is the area that its faces cover, or the line through its middle when they all stand upright; a
/// polyline is a line, or a point when it stands upright.
std::string to_wkt(SceneObjects const& objects);

/// The geometry of objects in the format that belongs to the path's extension, .obj, .stl or .wkt; of all scene objects
/// of the document when the list is empty. Objects without a geometry are left out. Throws Exception for another
/// extension, an empty pointer, and an object of another project.
std::string exported(Document const& document, std::string const& path,
                     std::vector<std::shared_ptr<SimObject>> const& objects);

}  // namespace pedflux::engine

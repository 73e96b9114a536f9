// Marching cubes over a sampled field: the level surface F = level of a grid
// of samples whose places (X, Y, Z) may be any mapping of the grid (the
// cylindrical and spherical forms map it before it comes here).
//
// The cube tables (which edges a corner pattern crosses, and the triangles
// of each pattern) are the classic ones in their usual corner and edge
// numbering, derived once at start from the cube's faces: on each face the
// level line cuts off each run of corners below the level on its own, so two
// cubes that share a face agree on it and the mesh has no cracks. Triangles
// are wound counter-clockwise seen from the side where F is above the level.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vt {

// The sampled field: nu x nv x nw samples, sample (i, j, k) at index
// (k * nv + j) * nu + i of each array.
struct IsoGrid {
  int nu = 0, nv = 0, nw = 0;
  const float* X = nullptr;
  const float* Y = nullptr;
  const float* Z = nullptr;
  const float* F = nullptr;
};

// The mesh: shared vertices (3 floats each) with unit normals (the sum of
// the normals of the triangles around them), and triangles as index triples.
struct IsoMesh {
  std::vector<float> pos;
  std::vector<float> nrm;
  std::vector<std::uint32_t> tri;
  size_t VertexCount() const { return pos.size() / 3; }
  size_t TriangleCount() const { return tri.size() / 3; }
  void Clear() {
    pos.clear();
    nrm.clear();
    tri.clear();
  }
};

// Meshes the grid against the level. A grid with fewer than 2 samples on an
// axis gives an empty mesh.
void MarchCubes(const IsoGrid& grid, float level, IsoMesh& mesh);

// The edges (bit e for edge e, 12 bits) that a corner pattern crosses; bit c
// of the pattern is set when corner c lies below the level.
std::uint16_t CubeEdgeMask(int pattern);
// The triangles of a pattern, as edge numbers, three per triangle.
const std::vector<std::int8_t>& CubeTriangles(int pattern);

// Draws the mesh as GL triangles with its normals (needs a current context).
// colors: 3 floats per vertex, or empty for the current colour; alpha for all.
void DrawIsoMesh(const IsoMesh& mesh, const std::vector<float>& colors, float alpha);

}  // namespace vt

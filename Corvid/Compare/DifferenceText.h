#pragma once

#include <string>

#include "Corvid/Compare/Difference.h"

namespace Corvid {

// One line for people, without its end:
//     MeshData.Material[2].Glossiness: 50.0 -> 60.0
//     + MeshData.Material[1] "Hull-da.dds"
//     MeshData.Material[2] -> MeshData.Material[0] moved
//     MeshData.Vertex: 812 of 3000 differ, Position by at most 0.25 at Vertex[17]
void AppendDifferenceText(std::string& text, const Difference& difference);

} // namespace Corvid

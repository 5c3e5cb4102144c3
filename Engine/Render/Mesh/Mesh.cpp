#include "Engine/Render/Mesh/Mesh.h"

namespace Corvid {

Mesh::Mesh(const MeshLoadParameters& parameters) : m_LoadParameters(parameters) {}

} // namespace Corvid

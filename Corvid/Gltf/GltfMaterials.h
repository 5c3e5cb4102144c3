#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Gltf/GltfDocument.h"
#include "Engine/Render/Mesh/MeshParts.h"

namespace Corvid {

// Colours become factors (specular and ambient have none), glossiness becomes roughness; the values themselves travel
// in the notes, and are taken back as long as the factor is still what stands for them. Textures are names in the
// notes, and pictures where one comes along.

using GltfImageFinder = std::function<int(std::u16string_view textureName)>; // an image of the document, or none

GltfMaterial MakeGltfMaterial(const MeshMaterial& material, const GltfImageFinder& findImage);

// False when a texture's name was too long, and cut.
bool TakeGltfMaterial(const GltfMaterial& source, const std::vector<GltfImage>& images, MeshMaterial& material);

// What a primitive without a material gets: white, not shining.
void MakePlainMaterial(MeshMaterial& material);

} // namespace Corvid

#include "Engine/Render/Particle/ParticleEmitter.h"

#include "Engine/File/PathParts.h"

namespace Corvid {

namespace {

void KeepFilePart(FixedString<256>& path) {
    const PathParts parts = SplitPath(path.GetView());
    const FixedString<256> filePart(path.GetView().substr(parts.m_Drive.size() + parts.m_Folder.size()));
    path = filePart;
}

} // namespace

void ParticleEmitter::NormaliseFileNames() {
    for (FixedString<256>& textureName : m_TextureNames)
        KeepFilePart(textureName);
    KeepFilePart(m_MeshName);
    KeepFilePart(m_TextureAnimationName);
}

void ParticleEmitter::ReleaseTextures() {
    for (TextureReference& texture : m_Textures)
        texture.Return();
    m_TextureAnimation.Return();
}

} // namespace Corvid

#pragma once

#include <cstdint>

#include "Engine/Archive/Record.h"
#include "Engine/DataStructures/FixedArray.h"
#include "Engine/Math/Color.h"
#include "Engine/Math/Matrix.h"
#include "Engine/Math/Vector.h"
#include "Engine/Render/Billboard.h"
#include "Engine/Render/Particle/EmitterType.h"
#include "Engine/Render/Particle/PipelineEffect.h"
#include "Engine/Render/Particle/TextureAnimationSpawnType.h"
#include "Engine/Render/TextureReference.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

// What every emitter of particles has; the kinds add the shape of the region in which particles start.
class ParticleEmitter : public Record<ParticleEmitter> {
public:
    virtual ~ParticleEmitter() = default;

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Name", self.m_Name);
        fields.Value(u"Enabled", self.m_Enabled);
        fields.Value(u"EmitRate", self.m_EmitRate);
        fields.Value(u"HasInfiniteEmitCount", self.m_HasInfiniteEmitCount);
        fields.Value(u"MaxEmitCount", self.m_MaxEmitCount);
        fields.Value(u"hasEmitIntervals", self.m_HasEmitIntervals);
        fields.Value(u"emitIntervalRunDuration", self.m_EmitIntervalRunDuration);
        fields.Value(u"emitIntervalWaitDuration", self.m_EmitIntervalWaitDuration);
        fields.Value(u"ParticleLifeTime", self.m_ParticleLifeTime);
        fields.Value(u"ParticleMinStartLinearSpeed", self.m_ParticleMinStartLinearSpeed);
        fields.Value(u"ParticleMaxStartLinearSpeed", self.m_ParticleMaxStartLinearSpeed);
        fields.Value(u"ParticleMinStartAngularSpeed", self.m_ParticleMinStartAngularSpeed);
        fields.Value(u"ParticleMaxStartAngularSpeed", self.m_ParticleMaxStartAngularSpeed);
        fields.Value(u"ParticleMinStartRotation", self.m_ParticleMinStartRotation);
        fields.Value(u"ParticleMaxStartRotation", self.m_ParticleMaxStartRotation);
        fields.Value(u"ParticleStartMass", self.m_ParticleStartMass);
        fields.Value(u"ParticleStartColor", self.m_ParticleStartColor);
        fields.Value(u"ParticleWidth", self.m_ParticleWidth);
        fields.Value(u"ParticleHeight", self.m_ParticleHeight);
        fields.Value(u"MeshName", self.m_MeshName, AssetKind::Mesh);
        fields.Value(u"Position", self.m_Position);
        fields.Value(u"Orientation", self.m_Orientation);
        fields.Value(u"RotateAboutForward", self.m_RotateAboutForward);
        fields.Value(u"RotateAboutUp", self.m_RotateAboutUp);
        fields.Value(u"RotateAboutCross", self.m_RotateAboutCross);
        fields.Value(u"StartTime", self.m_StartTime);
        fields.Value(u"HasInfiniteLifeTime", self.m_HasInfiniteLifeTime);
        fields.Value(u"TotalLifeTime", self.m_TotalLifeTime);
        fields.Value(u"BillboardAnchor", self.m_BillboardAnchor, ValueRange{0, 8});
        fields.AfterLoad(self, [](auto& loaded) { loaded.DeriveBillboardRectangle(); });
        fields.Value(u"ParticleFacing", self.m_ParticleFacing);
        fields.Value(u"PipelineEffectID", self.m_PipelineEffect);
        fields.Value(u"AreParticlesAttached", self.m_AreParticlesAttached);
        fields.Slots(u"numTextures", u"textureName", self.m_TextureNames, AssetKind::Texture);
        fields.Value(u"textureAnimationName", self.m_TextureAnimationName, AssetKind::TextureAnimation);
        fields.Value(u"textureAnimationSpawnType", self.m_TextureAnimationSpawnType);
        fields.Value(u"textureAnimationOnParticleFPS", self.m_TextureAnimationOnParticleFPS);
        fields.Value(u"ParticlesRotate", self.m_ParticlesRotate);
        fields.Value(u"MeshParticleRotationAxisType", self.m_MeshParticleRotationAxisType);
        fields.Value(u"MeshParticleRotationAxis", self.m_MeshParticleRotationAxis);
        fields.Value(u"RotationDirectionType", self.m_RotationDirectionType);
    }

    EmitterType GetType() const { return m_Type; }
    const FixedString<64>& GetName() const { return m_Name; } // affectors attach by it
    const BillboardRectangle& GetBillboardRectangle() const { return m_BillboardRectangle; }

    // Takes drive and folder off the names of the mesh, the textures and the texture animation.
    void NormaliseFileNames();

    // Clears the texture references; may be called again.
    void ReleaseTextures();

protected:
    explicit ParticleEmitter(EmitterType type) : m_Type(type) {}

private:
    void DeriveBillboardRectangle() { m_BillboardRectangle = BillboardRectangleAt(m_BillboardAnchor); }

    EmitterType m_Type;
    FixedArray<TextureReference, 2> m_Textures; // not archived: only their names are
    TextureReference m_TextureAnimation;

    FixedString<64> m_Name;
    bool m_Enabled = true;
    float m_EmitRate = 1.0f;
    bool m_HasInfiniteEmitCount = true;
    std::int32_t m_MaxEmitCount = 1;
    bool m_HasEmitIntervals = false;
    float m_EmitIntervalRunDuration = 0.0f;
    float m_EmitIntervalWaitDuration = 0.0f;
    float m_ParticleLifeTime = 3.0f;
    float m_ParticleMinStartLinearSpeed = 0.0f;
    float m_ParticleMaxStartLinearSpeed = 0.0f;
    float m_ParticleMinStartAngularSpeed = 0.0f;
    float m_ParticleMaxStartAngularSpeed = 0.0f;
    float m_ParticleMinStartRotation = 0.0f;
    float m_ParticleMaxStartRotation = 0.0f;
    float m_ParticleStartMass = 1.0f;
    Color m_ParticleStartColor = kWhite;
    float m_ParticleWidth = 1.0f;
    float m_ParticleHeight = 1.0f;
    FixedString<256> m_MeshName;
    Vector3 m_Position{0.0f, 0.0f, 0.0f};
    Matrix33 m_Orientation = Matrix33::Identity();
    float m_RotateAboutForward = 0.0f;
    float m_RotateAboutUp = 0.0f;
    float m_RotateAboutCross = 0.0f;
    float m_StartTime = 0.0f;
    bool m_HasInfiniteLifeTime = true;
    float m_TotalLifeTime = 0.0f;
    std::int32_t m_BillboardAnchor = 0;
    BillboardRectangle m_BillboardRectangle = BillboardRectangleAt(0); // of the anchor; not archived
    std::int32_t m_ParticleFacing = 0;
    PipelineEffect m_PipelineEffect = PipelineEffect::Invalid;
    bool m_AreParticlesAttached = true;
    FixedArray<FixedString<256>, 2> m_TextureNames;
    FixedString<256> m_TextureAnimationName;
    TextureAnimationSpawnType m_TextureAnimationSpawnType = TextureAnimationSpawnType::RandomFrames;
    float m_TextureAnimationOnParticleFPS = 0.0f; // frames per second
    bool m_ParticlesRotate = false;
    std::int32_t m_MeshParticleRotationAxisType = 0;
    Vector3 m_MeshParticleRotationAxis{0.0f, 0.1f, 0.0f}; // short on purpose
    std::int32_t m_RotationDirectionType = 0;
};

} // namespace Corvid

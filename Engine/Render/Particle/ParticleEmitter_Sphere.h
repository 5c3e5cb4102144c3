#pragma once

#include "Engine/Render/Particle/ParticleEmitter.h"

namespace Corvid {

class ParticleEmitter_Sphere final : public Record<ParticleEmitter_Sphere, ParticleEmitter> {
public:
    ParticleEmitter_Sphere() : Record(EmitterType::Sphere) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"SphereRadiusXMax", self.m_SphereRadiusXMax);
        fields.Value(u"SphereRadiusXMin", self.m_SphereRadiusXMin);
        fields.Value(u"SphereRadiusYMax", self.m_SphereRadiusYMax);
        fields.Value(u"SphereRadiusYMin", self.m_SphereRadiusYMin);
        fields.Value(u"SphereRadiusZMax", self.m_SphereRadiusZMax);
        fields.Value(u"SphereRadiusZMin", self.m_SphereRadiusZMin);
        fields.Value(u"ParticleMaxStartSpeedAzimuthalTangential", self.m_ParticleMaxStartSpeedAzimuthalTangential);
        fields.Value(u"ParticleMaxStartSpeedPolarTangential", self.m_ParticleMaxStartSpeedPolarTangential);
        fields.Value(u"ScaleStartSpeedsByRadius", self.m_ScaleStartSpeedsByRadius);
        fields.Value(u"SpawnAngleLatitudinalStart", self.m_SpawnAngleLatitudinalStart);
        fields.Value(u"SpawnAngleLatitudinalStop", self.m_SpawnAngleLatitudinalStop);
        fields.Value(u"SpawnAngleLongitudinalStart", self.m_SpawnAngleLongitudinalStart);
        fields.Value(u"SpawnAngleLongitudinalStop", self.m_SpawnAngleLongitudinalStop);
    }

private:
    float m_SphereRadiusXMax = 10.0f;
    float m_SphereRadiusXMin = 10.0f;
    float m_SphereRadiusYMax = 10.0f;
    float m_SphereRadiusYMin = 10.0f;
    float m_SphereRadiusZMax = 10.0f;
    float m_SphereRadiusZMin = 10.0f;
    float m_ParticleMaxStartSpeedAzimuthalTangential = 0.0f;
    float m_ParticleMaxStartSpeedPolarTangential = 0.0f;
    bool m_ScaleStartSpeedsByRadius = false;
    float m_SpawnAngleLatitudinalStart = 0.0f;       // radians
    float m_SpawnAngleLatitudinalStop = 3.1415927f;  // radians
    float m_SpawnAngleLongitudinalStart = 0.0f;      // radians
    float m_SpawnAngleLongitudinalStop = 6.2831855f; // radians
};

} // namespace Corvid

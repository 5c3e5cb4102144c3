#pragma once

#include <cstdint>

#include "Engine/Render/Particle/ParticleEmitter.h"

namespace Corvid {

class ParticleEmitter_Ring final : public Record<ParticleEmitter_Ring, ParticleEmitter> {
public:
    ParticleEmitter_Ring() : Record(EmitterType::Ring) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"RingRadiusXMin", self.m_RingRadiusXMin);
        fields.Value(u"RingRadiusXMax", self.m_RingRadiusXMax);
        fields.Value(u"RingRadiusYMin", self.m_RingRadiusYMin);
        fields.Value(u"RingRadiusYMax", self.m_RingRadiusYMax);
        fields.Value(u"ParticleMaxStartSpeedTangential", self.m_ParticleMaxStartSpeedTangential);
        fields.Value(u"ParticleMaxStartSpeedRingNormal", self.m_ParticleMaxStartSpeedRingNormal);
        fields.Value(u"ScaleStartSpeedsByRadius", self.m_ScaleStartSpeedsByRadius);
        fields.Value(u"SpawnAngleStart", self.m_SpawnAngleStart);
        fields.Value(u"SpawnAngleStop", self.m_SpawnAngleStop);
        fields.Value(u"minSpawnHeight", self.m_MinSpawnHeight);
        fields.Value(u"maxSpawnHeight", self.m_MaxSpawnHeight);
        fields.Value(u"spawnDirectionIsParallelToPlane", self.m_SpawnDirectionIsParallelToPlane);
        fields.Value(u"isSpawnAngleRandom", self.m_IsSpawnAngleRandom);
        fields.Value(u"nonRandomSpawnLoopEmittedParticleCount", self.m_NonRandomSpawnLoopEmittedParticleCount);
    }

private:
    float m_RingRadiusXMin = 10.0f;
    float m_RingRadiusXMax = 10.0f;
    float m_RingRadiusYMin = 10.0f;
    float m_RingRadiusYMax = 10.0f;
    float m_ParticleMaxStartSpeedTangential = 0.0f;
    float m_ParticleMaxStartSpeedRingNormal = 0.0f;
    bool m_ScaleStartSpeedsByRadius = false;
    float m_SpawnAngleStart = 0.0f;      // radians
    float m_SpawnAngleStop = 6.2831855f; // radians
    float m_MinSpawnHeight = 0.0f;
    float m_MaxSpawnHeight = 0.0f;
    bool m_SpawnDirectionIsParallelToPlane = true;
    bool m_IsSpawnAngleRandom = true;
    std::int32_t m_NonRandomSpawnLoopEmittedParticleCount = 0;
};

} // namespace Corvid

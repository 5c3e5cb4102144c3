#pragma once

#include "Engine/Render/Particle/ParticleAffector.h"

namespace Corvid {

class ParticleAffector_LinearBoundedInflate final
    : public Record<ParticleAffector_LinearBoundedInflate, ParticleAffector> {
public:
    explicit ParticleAffector_LinearBoundedInflate(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::LinearBoundedInflate, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"MinWidth", self.m_MinWidth);
        fields.Value(u"MaxWidth", self.m_MaxWidth);
        fields.Value(u"MinHeight", self.m_MinHeight);
        fields.Value(u"MaxHeight", self.m_MaxHeight);
    }

private:
    float m_MinWidth = 0.0f;
    float m_MaxWidth = 0.0f;
    float m_MinHeight = 0.0f;
    float m_MaxHeight = 0.0f;
};

class ParticleAffector_LinearInflate final : public Record<ParticleAffector_LinearInflate, ParticleAffector> {
public:
    explicit ParticleAffector_LinearInflate(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::LinearInflate, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"WidthInflateRate", self.m_WidthInflateRate);
        fields.Value(u"HeightInflateRate", self.m_HeightInflateRate);
    }

private:
    float m_WidthInflateRate = 1.0f;
    float m_HeightInflateRate = 1.0f;
};

class ParticleAffector_SizeOscillator final : public Record<ParticleAffector_SizeOscillator, ParticleAffector> {
public:
    explicit ParticleAffector_SizeOscillator(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::SizeOscillator, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"TransitionPeriod", self.m_TransitionPeriod);
        fields.Value(u"BeginSizeX", self.m_BeginSizeX);
        fields.Value(u"BeginSizeY", self.m_BeginSizeY);
        fields.Value(u"EndSizeX", self.m_EndSizeX);
        fields.Value(u"EndSizeY", self.m_EndSizeY);
    }

private:
    float m_TransitionPeriod = 1.0f;
    float m_BeginSizeX = 1.0f;
    float m_BeginSizeY = 1.0f;
    float m_EndSizeX = 3.0f;
    float m_EndSizeY = 3.0f;
};

} // namespace Corvid

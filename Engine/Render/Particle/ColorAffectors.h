#pragma once

#include "Engine/Render/Particle/ParticleAffector.h"

namespace Corvid {

class ParticleAffector_ColorOscillator final : public Record<ParticleAffector_ColorOscillator, ParticleAffector> {
public:
    explicit ParticleAffector_ColorOscillator(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::ColorOscillator, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"TransitionPeriod", self.m_TransitionPeriod);
        fields.Value(u"StartColor", self.m_StartColor);
        fields.Value(u"StartAlpha", self.m_StartAlpha);
        fields.Value(u"EndColor", self.m_EndColor);
        fields.Value(u"EndAlpha", self.m_EndAlpha);
    }

private:
    float m_TransitionPeriod = 1.0f;
    Color m_StartColor = kWhite;
    float m_StartAlpha = 1.0f;
    Color m_EndColor = kWhite;
    float m_EndAlpha = 1.0f;
};

class ParticleAffector_Fade final : public Record<ParticleAffector_Fade, ParticleAffector> {
public:
    explicit ParticleAffector_Fade(const ParticleSimulationDefinition& owner) : Record(AffectorType::Fade, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"DoFadeOut", self.m_DoFadeOut);
        fields.Value(u"FadeOutTime", self.m_FadeOutTime);
        fields.Value(u"DoFadeIn", self.m_DoFadeIn);
        fields.Value(u"FadeInTime", self.m_FadeInTime);
    }

private:
    bool m_DoFadeOut = true;
    float m_FadeOutTime = 1.0f;
    bool m_DoFadeIn = false;
    float m_FadeInTime = 1.0f;
};

} // namespace Corvid

#pragma once

#include "Engine/Render/Particle/ParticleAffector.h"

namespace Corvid {

class ParticleAffector_Drag final : public Record<ParticleAffector_Drag, ParticleAffector> {
public:
    explicit ParticleAffector_Drag(const ParticleSimulationDefinition& owner) : Record(AffectorType::Drag, owner) {}

    static void Fields(auto& self, auto& fields) { fields.Value(u"DragCoefficient", self.m_DragCoefficient); }

private:
    float m_DragCoefficient = 1.0f;
};

class ParticleAffector_Jitter final : public Record<ParticleAffector_Jitter, ParticleAffector> {
public:
    explicit ParticleAffector_Jitter(const ParticleSimulationDefinition& owner) : Record(AffectorType::Jitter, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"JitterForce", self.m_JitterForce);
        fields.Value(u"UseCommonForce", self.m_UseCommonForce);
    }

private:
    float m_JitterForce = 0.0f;
    bool m_UseCommonForce = false;
};

class ParticleAffector_LinearForceInDirection final
    : public Record<ParticleAffector_LinearForceInDirection, ParticleAffector> {
public:
    explicit ParticleAffector_LinearForceInDirection(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::LinearForceInDirection, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"MinForce", self.m_MinForce);
        fields.Value(u"MaxForce", self.m_MaxForce);
        fields.Value(u"Direction", self.m_Direction);
    }

private:
    float m_MinForce = 1.0f;
    float m_MaxForce = 1.0f;
    Vector3 m_Direction{1.0f, 0.0f, 0.0f};
};

class ParticleAffector_LinearForceToPoint final : public Record<ParticleAffector_LinearForceToPoint, ParticleAffector> {
public:
    explicit ParticleAffector_LinearForceToPoint(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::LinearForceToPoint, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"MinForce", self.m_MinForce);
        fields.Value(u"MaxForce", self.m_MaxForce);
        fields.Value(u"Point", self.m_Point);
    }

private:
    float m_MinForce = 1.0f;
    float m_MaxForce = 1.0f;
    Vector3 m_Point{0.0f, 0.0f, 0.0f};
};

class ParticleAffector_RotateAboutAxis final : public Record<ParticleAffector_RotateAboutAxis, ParticleAffector> {
public:
    explicit ParticleAffector_RotateAboutAxis(const ParticleSimulationDefinition& owner)
        : Record(AffectorType::RotateAboutAxis, owner) {}

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"AngularVelocity", self.m_AngularVelocity);
        fields.Value(u"Radius", self.m_Radius);
        fields.Value(u"AxisOfRotation", self.m_AxisOfRotation);
        fields.Value(u"AxisOrigin", self.m_AxisOrigin);
    }

private:
    float m_AngularVelocity = 1.0f;
    float m_Radius = 1.0f;
    Vector3 m_AxisOfRotation{1.0f, 0.0f, 0.0f};
    Vector3 m_AxisOrigin{0.0f, 0.0f, 0.0f};
};

} // namespace Corvid

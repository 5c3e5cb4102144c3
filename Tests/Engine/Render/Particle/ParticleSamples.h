#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// An emitter or affector of a file: its type word, then the lines of its record without their indentation.
struct SampleEntry {
    std::string_view m_Word;
    std::string m_Lines;
};

// The lines of a definition as they are saved.
inline std::string EffectLines(const std::vector<SampleEntry>& emitters, const std::vector<SampleEntry>& affectors) {
    std::string text = "ParticleSimulation\n\tHasInfiniteLifeTime TRUE\n\tTotalLifeTime 2.500000\n";
    const auto append = [&text](const std::string& kind, const std::vector<SampleEntry>& entries) {
        text += "\tNum" + kind + "s " + std::to_string(entries.size()) + "\n";
        for (const SampleEntry& entry : entries) {
            text += "\t" + kind + "Type \"" + std::string(entry.m_Word) + "\"\n\t" + kind + "Contents\n";
            bool isLineStart = true;
            for (const char c : entry.m_Lines) {
                text += isLineStart ? "\t\t" : "";
                text += c;
                isLineStart = c == '\n';
            }
        }
    };
    append("Emitter", emitters);
    append("Affector", affectors);
    return text + "\tlength 7.000000\n";
}

// `text` with its first `from` replaced.
inline std::string With(std::string text, std::string_view from, std::string_view to) {
    return text.replace(text.find(from), from.size(), to);
}

// Every field of the emitters' base record with a value of its own, none the default.
inline constexpr char kEmitterLines[] = R"(Name "smoke"
Enabled FALSE
EmitRate 12.500000
HasInfiniteEmitCount FALSE
MaxEmitCount 77
hasEmitIntervals TRUE
emitIntervalRunDuration 1.250000
emitIntervalWaitDuration 2.750000
ParticleLifeTime 4.500000
ParticleMinStartLinearSpeed -1.500000
ParticleMaxStartLinearSpeed 2.250000
ParticleMinStartAngularSpeed 3.125000
ParticleMaxStartAngularSpeed 4.750000
ParticleMinStartRotation 5.250000
ParticleMaxStartRotation 6.250000
ParticleStartMass 7.250000
ParticleStartColor 80ff0033
ParticleWidth 8.250000
ParticleHeight 9.250000
MeshName "ring.mesh"
Position [ 1.000000 2.000000 3.000000 ]
Orientation
	 [ 0.000000 1.000000 0.000000 ]
	 [ -1.000000 0.000000 0.000000 ]
	 [ 0.000000 0.000000 0.500000 ]
RotateAboutForward 0.500000
RotateAboutUp 0.250000
RotateAboutCross 0.125000
StartTime 10.500000
HasInfiniteLifeTime FALSE
TotalLifeTime 20.500000
BillboardAnchor 8
ParticleFacing 2
PipelineEffectID "Particle_AlphaMesh.fx"
AreParticlesAttached FALSE
numTextures 2
textureName "one.dds"
textureName "two.dds"
textureAnimationName "fire.texanim"
textureAnimationSpawnType "SequentialFrames"
textureAnimationOnParticleFPS 24.000000
ParticlesRotate TRUE
MeshParticleRotationAxisType 3
MeshParticleRotationAxis [ 0.000000 0.250000 1.000000 ]
RotationDirectionType 4
)";

inline constexpr char kEmitterDefaults[] = R"(Name ""
Enabled TRUE
EmitRate 1.000000
HasInfiniteEmitCount TRUE
MaxEmitCount 1
hasEmitIntervals FALSE
emitIntervalRunDuration 0.000000
emitIntervalWaitDuration 0.000000
ParticleLifeTime 3.000000
ParticleMinStartLinearSpeed 0.000000
ParticleMaxStartLinearSpeed 0.000000
ParticleMinStartAngularSpeed 0.000000
ParticleMaxStartAngularSpeed 0.000000
ParticleMinStartRotation 0.000000
ParticleMaxStartRotation 0.000000
ParticleStartMass 1.000000
ParticleStartColor ffffffff
ParticleWidth 1.000000
ParticleHeight 1.000000
MeshName ""
Position [ 0.000000 0.000000 0.000000 ]
Orientation
	 [ 1.000000 0.000000 0.000000 ]
	 [ 0.000000 1.000000 0.000000 ]
	 [ 0.000000 0.000000 1.000000 ]
RotateAboutForward 0.000000
RotateAboutUp 0.000000
RotateAboutCross 0.000000
StartTime 0.000000
HasInfiniteLifeTime TRUE
TotalLifeTime 0.000000
BillboardAnchor 0
ParticleFacing 0
PipelineEffectID "Invalid"
AreParticlesAttached TRUE
numTextures 2
textureName ""
textureName ""
textureAnimationName ""
textureAnimationSpawnType "RandomFrames"
textureAnimationOnParticleFPS 0.000000
ParticlesRotate FALSE
MeshParticleRotationAxisType 0
MeshParticleRotationAxis [ 0.000000 0.100000 0.000000 ]
RotationDirectionType 0
)";

inline constexpr char kAffectorLines[] = R"(Name "wind"
Enabled FALSE
StartTime 1.500000
HasInfiniteLifeTime FALSE
TotalLifeTime 2.250000
UseYoungParticleAffectThreshold TRUE
YoungParticleAffectThreshold 3.500000
UseOldParticleAffectThreshold TRUE
OldParticleAffectThreshold 4.500000
AffectAttachedParticles FALSE
numAttachedEmitters 2
attachedEmitterName "smoke"
attachedEmitterName "nobody"
)";

inline constexpr char kAffectorDefaults[] = R"(Name ""
Enabled TRUE
StartTime 0.000000
HasInfiniteLifeTime TRUE
TotalLifeTime 0.000000
UseYoungParticleAffectThreshold FALSE
YoungParticleAffectThreshold 0.000000
UseOldParticleAffectThreshold FALSE
OldParticleAffectThreshold 0.000000
AffectAttachedParticles TRUE
numAttachedEmitters 0
)";

inline const SampleEntry kPoint{"Point", std::string(kEmitterLines) + "AngleVariance 0.500000\n"};
inline const SampleEntry kDrag{"Drag", std::string(kAffectorLines) + "DragCoefficient 2.500000\n"};

} // namespace Corvid

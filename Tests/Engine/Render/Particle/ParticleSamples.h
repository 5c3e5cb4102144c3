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

// The lines of a definition, as they are saved, with these emitters and affectors.
inline std::string EffectLines(const std::vector<SampleEntry>& emitters, const std::vector<SampleEntry>& affectors) {
    std::string text = "HasInfiniteLifeTime TRUE\nTotalLifeTime 2.500000\n";
    const auto append = [&text](const std::string& kind, const std::vector<SampleEntry>& entries) {
        text += "Num" + kind + "s " + std::to_string(entries.size()) + "\n";
        for (const SampleEntry& entry : entries) {
            text += kind + "Type \"" + std::string(entry.m_Word) + "\"\n" + kind + "Contents\n";
            bool isLineStart = true;
            for (const char c : entry.m_Lines) {
                text += isLineStart ? "\t" : "";
                text += c;
                isLineStart = c == '\n';
            }
        }
    };
    append("Emitter", emitters);
    append("Affector", affectors);
    return text + "length 7.000000\n";
}

// `text` with its first `from` replaced.
inline std::string With(std::string text, std::string_view from, std::string_view to) {
    return text.replace(text.find(from), from.size(), to);
}

// Fields of a record, one per line: a label, a value of its own, and the default where that is another.
inline constexpr char kEmitterFields[] = R"(Name "smoke" | ""
Enabled FALSE | TRUE
EmitRate 12.500000 | 1.000000
HasInfiniteEmitCount FALSE | TRUE
MaxEmitCount 77 | 1
hasEmitIntervals TRUE | FALSE
emitIntervalRunDuration 1.250000 | 0.000000
emitIntervalWaitDuration 2.750000 | 0.000000
ParticleLifeTime 4.500000 | 3.000000
ParticleMinStartLinearSpeed -1.500000 | 0.000000
ParticleMaxStartLinearSpeed 2.250000 | 0.000000
ParticleMinStartAngularSpeed 3.125000 | 0.000000
ParticleMaxStartAngularSpeed 4.750000 | 0.000000
ParticleMinStartRotation 5.250000 | 0.000000
ParticleMaxStartRotation 6.250000 | 0.000000
ParticleStartMass 7.250000 | 1.000000
ParticleStartColor 80ff0033 | ffffffff
ParticleWidth 8.250000 | 1.000000
ParticleHeight 9.250000 | 1.000000
MeshName "ring.mesh" | ""
Position [ 1.000000 2.000000 3.000000 ] | [ 0.000000 0.000000 0.000000 ]
Orientation
	 [ 0.000000 1.000000 0.000000 ] | [ 1.000000 0.000000 0.000000 ]
	 [ -1.000000 0.000000 0.000000 ] | [ 0.000000 1.000000 0.000000 ]
	 [ 0.000000 0.000000 0.500000 ] | [ 0.000000 0.000000 1.000000 ]
RotateAboutForward 0.500000 | 0.000000
RotateAboutUp 0.250000 | 0.000000
RotateAboutCross 0.125000 | 0.000000
StartTime 10.500000 | 0.000000
HasInfiniteLifeTime FALSE | TRUE
TotalLifeTime 20.500000 | 0.000000
BillboardAnchor 8 | 0
ParticleFacing 2 | 0
PipelineEffectID "Particle_AlphaMesh.fx" | "Invalid"
AreParticlesAttached FALSE | TRUE
numTextures 2
textureName "one.dds" | ""
textureName "two.dds" | ""
textureAnimationName "fire.texanim" | ""
textureAnimationSpawnType "SequentialFrames" | "RandomFrames"
textureAnimationOnParticleFPS 24.000000 | 0.000000
ParticlesRotate TRUE | FALSE
MeshParticleRotationAxisType 3 | 0
MeshParticleRotationAxis [ 0.000000 0.250000 1.000000 ] | [ 0.000000 0.100000 0.000000 ]
RotationDirectionType 4 | 0
)";
inline constexpr char kAffectorFields[] = R"(Name "wind" | ""
Enabled FALSE | TRUE
StartTime 1.500000 | 0.000000
HasInfiniteLifeTime FALSE | TRUE
TotalLifeTime 2.250000 | 0.000000
UseYoungParticleAffectThreshold TRUE | FALSE
YoungParticleAffectThreshold 3.500000 | 0.000000
UseOldParticleAffectThreshold TRUE | FALSE
OldParticleAffectThreshold 4.500000 | 0.000000
AffectAttachedParticles FALSE | TRUE
)";
inline constexpr char kAttachedNames[] =
    "numAttachedEmitters 2\nattachedEmitterName \"smoke\"\nattachedEmitterName \"nobody\"\n";

// The lines of such fields, with their own values or with the defaults.
inline std::string FieldLines(std::string_view fields, bool areDefault) {
    std::string lines;
    while (!fields.empty()) {
        const std::string_view line = fields.substr(0, fields.find('\n'));
        fields.remove_prefix(line.size() + 1);
        const std::size_t bar = line.find(" | ");
        if (bar == line.npos || !areDefault)
            lines += line.substr(0, bar);
        else
            lines.append(line.substr(0, line.find(' '))).append(line.substr(bar + 2));
        lines += '\n';
    }
    return lines;
}

inline SampleEntry SampleEmitter() {
    return {"Point", FieldLines(kEmitterFields, false) + "AngleVariance 0.500000\n"};
}

inline SampleEntry SampleAffector() {
    return {"Drag", FieldLines(kAffectorFields, false) + kAttachedNames + "DragCoefficient 2.500000\n"};
}

} // namespace Corvid

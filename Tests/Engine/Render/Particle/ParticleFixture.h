#pragma once

#include <string>
#include <string_view>

#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {

// Takes definitions through both encodings. Texts are lines with "\n", without the header.
class ParticleFixture : public ArchiveFixture {
protected:
    std::string SaveLines(const ParticleSimulationDefinition& definition) {
        std::string lines = SaveText(definition);
        std::erase(lines, '\r');
        return lines;
    }

    std::string TextToText(std::string_view lines) {
        ParticleSimulationDefinition definition;
        LoadText(lines, definition);
        return SaveLines(definition);
    }

    std::string TextToBinary(std::string_view lines) {
        ParticleSimulationDefinition definition;
        LoadText(lines, definition);
        return Save(ArchiveFormat::Binary, definition);
    }

    std::string BinaryToText(const std::string& bytes) {
        ParticleSimulationDefinition definition;
        Load(bytes, definition);
        return SaveLines(definition);
    }
};

} // namespace Corvid

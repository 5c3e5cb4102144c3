#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/String/ReportText.h"

namespace Corvid {

// Loads and saves definitions in memory and collects what is reported meanwhile. Texts have plain "\n" line ends.
class ParticleFixture : public testing::Test, private ReportSink {
protected:
    // From the lines of a text archive behind its header.
    void LoadText(ParticleSimulationDefinition& definition, std::string_view lines) {
        Load(definition, std::string("TXT\n").append(lines));
    }

    void Load(ParticleSimulationDefinition& definition, const std::string& bytes) {
        auto archive = m_System.OpenForReading(File::ReadFromMemory(u"memory", bytes));
        archive->ReadLabeledObject(u"ParticleSimulation", definition);
        archive->ReportUnreadInput();
        m_System.Release(std::move(archive));
    }

    std::string SaveText(const ParticleSimulationDefinition& definition) {
        std::string lines;
        for (const char c : Save(definition, ArchiveFormat::Text)) {
            if (c != '\r')
                lines.push_back(c);
        }
        return lines.substr(lines.find('\n') + 1);
    }

    std::string SaveBinary(const ParticleSimulationDefinition& definition) {
        return Save(definition, ArchiveFormat::Binary);
    }

    // Through a definition of its own.
    std::string TextToText(std::string_view lines) {
        ParticleSimulationDefinition definition;
        LoadText(definition, lines);
        return SaveText(definition);
    }

    std::string TextToBinary(std::string_view lines) {
        ParticleSimulationDefinition definition;
        LoadText(definition, lines);
        return SaveBinary(definition);
    }

    std::string BinaryToText(const std::string& bytes) {
        ParticleSimulationDefinition definition;
        Load(definition, bytes);
        return SaveText(definition);
    }

    // How many reports so far hold `text`.
    int CountReports(std::string_view text = "") const {
        int count = 0;
        for (const std::string& report : m_Reports)
            count += report.find(text) != report.npos;
        return count;
    }

    const std::vector<std::string>& Reports() const { return m_Reports; }
    void ForgetReports() { m_Reports.clear(); }

    FileArchiveSystem m_System;

private:
    std::string Save(const ParticleSimulationDefinition& definition, ArchiveFormat format) {
        std::string bytes;
        auto archive = m_System.OpenForWriting(File::WriteToMemory(u"memory", bytes), format);
        archive->WriteLabeledObject(u"ParticleSimulation", definition);
        m_System.Release(std::move(archive));
        return bytes;
    }

    void Take(const Report& report) override { AppendReportText(m_Reports.emplace_back(), report); }

    std::vector<std::string> m_Reports;
    Reporter m_Reporter{*this};
};

} // namespace Corvid

#pragma once

#include <vector>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Layouts/TouchedDoubts.h"
#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutLine.h"

namespace Corvid {

// What several samples show of a layout.
class LayoutCoverage {
public:
    explicit LayoutCoverage(LayoutIndex size) : m_IsMet(size, false) {}

    // Of a file that was followed with the type word in front.
    void Add(const LayoutTrail& trail) {
        ++m_SampleCount;
        for (std::size_t index = 0; index < m_IsMet.size(); ++index)
            m_IsMet[index] = m_IsMet[index] || trail.m_IsMet[index + 1];
    }

    bool IsMet(LayoutIndex index) const { return m_IsMet[index]; }
    std::size_t GetSampleCount() const { return m_SampleCount; }

private:
    std::vector<bool> m_IsMet;
    std::size_t m_SampleCount = 0;
};

// Why a layout file cannot be used. False: it could not even be read.
bool AddLayoutErrors(const std::vector<LayoutError>& errors, DiagnosticLog& log);

// What is wrong with a layout whatever the samples are: its type word, and blocks that are known to be in files of the
// type and are missing or doubled.
void FindLayoutFaults(const Layout& layout, DiagnosticLog& log);

// Its marks, and what no sample shows: branches never taken, lists without elements.
void FindOpenPoints(const Layout& layout, const LayoutCoverage& coverage, DiagnosticLog& log);

// A log without the warnings about marks.
DiagnosticLog WithoutMarks(const DiagnosticLog& log);

} // namespace Corvid

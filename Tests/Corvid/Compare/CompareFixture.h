#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Compare/DifferenceText.h"
#include "Corvid/Compare/TreeComparison.h"
#include "Corvid/Values/ValueTreeWriter.h"
#include "Kinds/KindObject.h"
#include "Tests/Corvid/Compare/EditedText.h"
#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {

// Files of the examples, edited in memory, against each other.
class CompareFixture : public ArchiveFixture {
protected:
    class Lines final : public DifferenceSink {
    public:
        void Take(const Difference& difference) override {
            m_Lines.emplace_back();
            AppendDifferenceText(m_Lines.back(), difference);
        }

        std::vector<std::string> m_Lines;
    };

    static std::string ReadExample(const std::string& name) {
        std::ifstream file(std::string(CORVID_SOURCE_FOLDER "/Examples/") + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    ValueTree TreeOf(Kind kind, const std::string& bytes) {
        const auto object = CreateKindObject(kind, u"memory");
        LoadWith(bytes, [&](FileArchive& archive) { object->Load(archive); });
        EXPECT_EQ(m_Reports.Take(), "");
        return StoredValuesOf(*object);
    }

    std::vector<std::string> Compare(Kind kind, const std::string& before, const std::string& after,
                                     const CompareOptions& options = {}) {
        Lines lines;
        CompareTrees(TreeOf(kind, before), TreeOf(kind, after), options, lines);
        return lines.m_Lines;
    }
};

} // namespace Corvid

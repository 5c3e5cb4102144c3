// LayoutBenchmark: a record of 30 MB, loaded and saved by compiled code and by its layout, in both encodings, and how
// long an ordinary layout takes to parse. Prints the best of some runs.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/Layout/DescribedRecord.h"
#include "Engine/Layout/LayoutLister.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"

namespace {

using namespace Corvid;

constexpr int kRuns = 5;

class Buoy final : public Record<Buoy> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"Name", self.m_Name);
        fields.Value(u"IsLit", self.m_IsLit);
        fields.Value(u"Position", self.m_Position);
        fields.Value(u"Depth", self.m_Depth);
        fields.Value(u"Group", self.m_Group);
        fields.Value(u"Tint", self.m_Tint);
    }

    FixedString<32> m_Name;
    bool m_IsLit = false;
    Vector3 m_Position{};
    float m_Depth = 0.0f;
    std::int32_t m_Group = 0;
    Color m_Tint;
};

class Chart final : public Record<Chart> {
public:
    static void Fields(auto& self, auto& fields) { fields.List(u"BuoyCount", u"Buoy", self.m_Buoys); }

    DynamicVector<Buoy> m_Buoys;
};

template <class Step> double BestSeconds(Step step) {
    double best = 1e9;
    for (int i = 0; i < kRuns; ++i) {
        const auto start = std::chrono::steady_clock::now();
        step();
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

std::string Save(const Archivable& object, ArchiveFormat format) {
    std::string bytes;
    FileArchiveSystem archives;
    archives.EnableChecksums(false);
    auto archive = archives.OpenForWriting(File::WriteToMemory(u"", bytes), format);
    object.Save(*archive);
    archives.Release(std::move(archive));
    return bytes;
}

void Load(Archivable& object, const std::string& bytes) {
    FileArchiveSystem archives;
    archives.EnableChecksums(false);
    auto archive = archives.OpenForReading(File::ReadFromMemory(u"", bytes));
    object.Load(*archive);
    archives.Release(std::move(archive));
}

void Measure(const char* name, const Chart& chart, const std::shared_ptr<const RecordPlan>& plan,
             ArchiveFormat format) {
    const std::string bytes = Save(chart, format);
    Chart compiled;
    DescribedRecord described(plan);
    const double loadCompiled = BestSeconds([&] { Load(compiled, bytes); });
    const double loadDescribed = BestSeconds([&] { Load(described, bytes); });
    bool isSame = true;
    const double saveCompiled = BestSeconds([&] { isSame &= Save(compiled, format) == bytes; });
    const double saveDescribed = BestSeconds([&] { isSame &= Save(described, format) == bytes; });
    const double megabytes = static_cast<double>(bytes.size()) / 1e6;
    std::printf("%s of %.1f MB%s: load %.0f MB/s compiled, %.0f described (%.2f); save %.0f, %.0f (%.2f)\n", name,
                megabytes, isSame ? "" : ", NOT THE SAME", megabytes / loadCompiled, megabytes / loadDescribed,
                loadCompiled / loadDescribed, megabytes / saveCompiled, megabytes / saveDescribed,
                saveCompiled / saveDescribed);
}

} // namespace

int main() {
    constexpr int kBuoys = 210'000;
    Chart chart;
    for (int i = 0; i < kBuoys; ++i) {
        Buoy& buoy = chart.m_Buoys.Append();
        const float number = static_cast<float>(i);
        buoy.m_Name = i % 3 == 0 ? u"Outer marker" : u"Inner marker of the harbour";
        buoy.m_IsLit = i % 2 == 0;
        buoy.m_Position = {number * 0.37f, -number, number / 7.0f};
        buoy.m_Depth = number / 3.0f;
        buoy.m_Group = i % 100;
        buoy.m_Tint = UnpackColor(static_cast<std::uint32_t>(i) * 2654435761u);
    }
    const Layout layout = LayoutOf("Chart", chart);
    const auto plan = std::make_shared<RecordPlan>(layout);
    Measure("text", chart, plan, ArchiveFormat::Text);
    Measure("binary", chart, plan, ArchiveFormat::Binary);

    std::string text = "layout 1\nrecord Buoy\n\tname string\n\tisLit bool\n\tposition vector3\nentity Quest\n";
    for (int i = 0; i < 100; ++i)
        text += "\tfield" + std::to_string(i) + (i % 10 == 9 ? " count\n\t\tbuoy record Buoy\n" : " float\n");
    const LayoutBlocks blocks;
    bool isSound = true;
    const double parsing = BestSeconds([&] { isSound &= ParseLayout(text, blocks).m_Layout.has_value(); });
    std::printf("a layout of 110 lines%s: parsed in %.3f ms\n", isSound ? "" : ", NOT SOUND", parsing * 1000.0);
    return 0;
}

// LayoutBenchmark: a record of 30 MB, loaded and saved by compiled code and by its layout, in both encodings; how long
// an ordinary layout takes to parse; how long a layout takes to be inferred from a thousand samples. Prints the best of
// some runs.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/Record.h"
#include "Engine/Layout/DescribedRecord.h"
#include "Engine/Layout/Infer/LayoutInference.h"
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

// An entity file of a type that nobody has described, of 10 KB.
class Voyage final : public Record<Voyage> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.Value(u"entityType", self.m_Type);
        fields.Value(u"IsCharted", self.m_IsCharted);
        if (self.m_IsCharted)
            fields.Value(u"Depth", self.m_Depth);
        fields.List(u"BuoyCount", u"Buoy", self.m_Buoys);
        fields.Value(u"Last", self.m_Last);
    }

    FixedString<32> m_Type;
    bool m_IsCharted = false;
    float m_Depth = 0.0f; // fathoms
    DynamicVector<Buoy> m_Buoys;
    std::int32_t m_Last = 0;
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

void Fill(Buoy& buoy, int i) {
    const float number = static_cast<float>(i);
    buoy.m_Name = i % 3 == 0 ? u"Outer marker" : u"Inner marker of the harbour";
    buoy.m_IsLit = i % 2 == 0;
    buoy.m_Position = {number * 0.37f, -number, number / 7.0f};
    buoy.m_Depth = number / 3.0f;
    buoy.m_Group = i % 100;
    buoy.m_Tint = UnpackColor(static_cast<std::uint32_t>(i) * 2654435761u);
}

// Texts, and some binary files that are none of them.
void MeasureInference() {
    constexpr int kSamples = 1'000;
    std::vector<Sample> samples;
    std::size_t bytes = 0;
    for (int i = 0; i < kSamples; ++i) {
        Voyage voyage;
        voyage.m_Type = u"Quest";
        voyage.m_IsCharted = i % 3 != 0;
        voyage.m_Depth = static_cast<float>(i) / 7.0f;
        voyage.m_Last = i - 500;
        const int buoys = 62 + i % 10;
        voyage.m_Buoys.SetCapacity(buoys);
        for (int buoy = 0; buoy < buoys; ++buoy)
            Fill(voyage.m_Buoys.Append(), i * 61 + buoy);
        samples.push_back({std::to_string(i), Save(voyage, i % 10 == 9 ? ArchiveFormat::Binary : ArchiveFormat::Text)});
        bytes += samples.back().m_Bytes.size();
    }
    bool isSound = true;
    const double seconds = BestSeconds([&] {
        const Inference inference = InferLayouts(samples, {});
        isSound &= inference.m_Types.at(0).m_HasLayout && inference.m_Types[0].m_Marks.empty();
    });
    std::printf("a layout of %d samples of %.1f KB%s: inferred in %.2f s\n", kSamples,
                static_cast<double>(bytes) / 1e3 / kSamples, isSound ? "" : ", NOT PROVEN", seconds);
}

} // namespace

int main() {
    constexpr int kBuoys = 210'000;
    Chart chart;
    chart.m_Buoys.SetCapacity(kBuoys);
    for (int i = 0; i < kBuoys; ++i)
        Fill(chart.m_Buoys.Append(), i);
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
    MeasureInference();
    return 0;
}

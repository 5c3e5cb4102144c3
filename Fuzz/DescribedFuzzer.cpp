// A layout and a file, divided by the first NUL: the file is loaded by the layout, each way of reading text and each
// time with other bytes in memory beforehand, and saved again.
//
// What must hold: all loadings give the same; memory and output stay within their bounds; what was saved as binary is
// read without a complaint and saved again byte for byte, unless nobody knows when some of its fields are there.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Engine/Layout/DescribedRecord.h"
#include "Engine/Layout/LayoutParser.h"
#include "Fuzz/Archives.h"
#include "Fuzz/HeapWatch.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid::Fuzz {

namespace {

// What a run promises of any input: at most so much, and so many times the input.
constexpr std::size_t kMostMemory = 64 << 20, kMemoryPerByte = 100;
constexpr std::size_t kLargestForText = 64 * 1024;

class DescribedObject final : public KindObject {
public:
    explicit DescribedObject(std::shared_ptr<const RecordPlan> plan)
        : KindObject(Kind::Entity), m_Record(std::move(plan)) {}

    void Load(Archive& archive) override { m_Record.Load(archive); }
    void Save(Archive& archive) const override { m_Record.Save(archive); }
    void ListFields(FieldListener& listener) const override { m_Record.ListFields(listener); }

private:
    DescribedRecord m_Record;
};

struct Conversion {
    Trace m_Trace;
    std::string m_Binary;
    std::string m_Text;
};

Conversion Convert(const std::shared_ptr<const RecordPlan>& plan, const std::string& file, Way way,
                   unsigned char fill) {
    Conversion result;
    const HeapWatch watch(fill);
    DescribedObject object(plan);
    result.m_Trace = Load(file, object, way);
    result.m_Binary = Save(object, ArchiveFormat::Binary);
    if (result.m_Binary.size() <= kLargestForText)
        result.m_Text = Save(object, ArchiveFormat::Text);
    Require(watch.GetPeak() <= kMostMemory + kMemoryPerByte * file.size(), "memory stays within its bound");
    return result;
}

void ExpectSame(const Conversion& one, const Conversion& other) {
    Require(one.m_Trace.IsLike(other.m_Trace), "all loadings report the same, at the same places");
    Require(one.m_Binary == other.m_Binary && one.m_Text == other.m_Text, "all loadings give the same record");
}

void Check(const std::shared_ptr<const RecordPlan>& plan, std::string_view input) {
    const bool isBinary = input.starts_with("BIN");
    const std::string file = AsFile(input, isBinary ? ArchiveFormat::Binary : ArchiveFormat::Text);
    const Conversion byLine = Convert(plan, file, Way::ByLine, 0x00);
    ExpectSame(Convert(plan, file, Way::AsWritten, 0xA5), byLine);
    if (!isBinary)
        ExpectSame(Convert(plan, file, Way::InPlace, 0x5A), byLine);

    const auto nodes = plan->GetLayout().GetNodes();
    const bool isUnknown = std::any_of(nodes.begin(), nodes.end(), [](const LayoutNode& node) {
        return node.m_Kind == LayoutKind::When && node.m_Condition.m_Field == kNoLayoutIndex;
    });
    if (isUnknown || byLine.m_Binary.size() > kLargestForText)
        return;
    const Conversion again = Convert(plan, byLine.m_Binary, Way::AsWritten, 0x5A);
    // Elements that take no bytes are bounded by what else the file holds, which may be less the second time.
    const bool isBounded = byLine.m_Trace.m_ComplaintCount > 0 && again.m_Trace.m_ComplaintCount > 0;
    Require(isBounded || (again.m_Binary == byLine.m_Binary && again.m_Text == byLine.m_Text),
            "binary is a fixed point");
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\0');
    if (end == input.npos)
        return 0;
    ParsedLayout parsed = ParseLayout(input.substr(0, end), BuiltInBlocks());
    constexpr LayoutIndex kLargestLayout = 2000; // a larger one only costs time
    if (parsed.m_Layout && parsed.m_Layout->GetSize() <= kLargestLayout)
        Fuzz::Check(std::make_shared<RecordPlan>(std::move(*parsed.m_Layout)), input.substr(end + 1));
    return 0;
}

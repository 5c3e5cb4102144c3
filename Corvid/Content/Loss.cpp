#include "Corvid/Content/Loss.h"

#include <cstdio>

#include "Corvid/Load/RawValues.h"
#include "Corvid/Values/ValueDifferences.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

void AddNotes(const std::vector<FieldDifference>& differences, std::string_view what, DiagnosticLog& log) {
    for (const FieldDifference& difference : differences) {
        std::string text = std::to_string(difference.m_Count) +
                           (difference.m_Count == 1 ? " value does not " : " values do not ") + std::string(what);
        if (difference.m_Largest > 0.0) {
            char amount[32];
            std::snprintf(amount, sizeof amount, "%.6g", difference.m_Largest);
            text += std::string(difference.m_Count == 1 ? ", by " : ", by at most ") + amount;
        }
        log.Add(DiagnosticCode::Loss, {}, difference.m_Path, std::move(text));
    }
}

} // namespace

void NoteLoss(const std::string& bytes, std::u16string_view path, const LoadedFile& file, LoadOptions options,
              DiagnosticLog& log) {
    const ValueTree loaded = ValuesOf(*file.m_Object);
    if (const std::optional<ValueTree> raw = ReadRawValues(bytes, file)) {
        const auto colors = file.m_Encoding == ArchiveFormat::Text ? ColorPrecision::EightBits : ColorPrecision::Floats;
        AddNotes(CompareValues(*raw, loaded, colors), "survive loading and saving", log);
    }
    if (file.m_Encoding != ArchiveFormat::Binary)
        return; // binary holds all that text does
    std::optional<std::string> text = SaveToBytes(*file.m_Object, ArchiveFormat::Text, FloatPrecision::Exact);
    if (!text)
        return;
    options.m_Kind = file.m_Kind;
    options.m_IsUnprovenAllowed = true; // what the file touches, so does its text
    const LoadedFile again = LoadFromBytes(std::move(*text), path, options);
    if (again.m_Object != nullptr)
        AddNotes(CompareValues(loaded, ValuesOf(*again.m_Object), ColorPrecision::Floats), "come back from text", log);
}

} // namespace Corvid

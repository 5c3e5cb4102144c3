#include "Corvid/Layouts/LayoutFindings.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "Engine/String/NearWord.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

// Of a node or an error
template <class Item> DiagnosticPlace PlaceOf(const Item& item) {
    return DiagnosticPlace::AtLine(static_cast<std::uint64_t>(item.m_Line), static_cast<std::uint64_t>(item.m_Column));
}

void Warn(DiagnosticLog& log, DiagnosticCode code, DiagnosticPlace place, std::string message) {
    log.Add({code, Severity::Warning, place, {}, std::move(message)});
}

std::map<std::string, int> CountBlocks(const Layout& layout) {
    std::map<std::string, int> counts;
    for (const LayoutNode& node : layout.GetNodes()) {
        if (node.m_Kind == LayoutKind::Use)
            ++counts[node.m_Name];
    }
    return counts;
}

std::string_view FirstLabelIn(const Layout& layout, LayoutIndex node) {
    for (LayoutIndex index = node + 1; index < layout[node].m_End; ++index) {
        if (!layout[index].m_Label.empty())
            return layout[index].m_Label;
    }
    return "something";
}

// What a mark leaves open, in words.
std::string DoubtOf(const Layout& layout, LayoutIndex index) {
    const LayoutNode& node = layout[index];
    if (node.m_Doubt.m_IsOfWidth)
        return "whether " + node.m_Label +
               " or a number beside it takes 8 bytes is not proven; a file in which the "
               "later of them are not 0 decides, in both encodings";
    switch (node.m_Kind) {
    case LayoutKind::Int:
        return node.m_Label + " may be a colour; a binary file, or a value with a letter, decides";
    case LayoutKind::Count:
        return node.m_Label + " may be a plain number; a file with 2 or more elements, or with none where it is not 0, "
                              "decides";
    case LayoutKind::Color:
        return node.m_Label + " may be a number; a binary file that has it decides";
    case LayoutKind::Int64:
    case LayoutKind::Float:
    case LayoutKind::Double:
        return "how many bytes " + node.m_Label + " takes is not proven; a binary file that has it decides";
    case LayoutKind::Bool:
        return node.m_Label + " has been seen with one value only; a file with the other decides";
    default:
        break;
    }
    std::string first(FirstLabelIn(layout, index));
    if (node.m_Condition.m_Field == kNoLayoutIndex)
        return "nobody knows when " + first + " is there; binary files of this type cannot be read";
    if (node.m_Doubt.m_Alternatives.empty())
        return "whether " + layout[node.m_Condition.m_Field].m_Label + " decides that " + first +
               " is there is not proven; more files with both decide";
    return "it may be " + layout[node.m_Doubt.m_Alternatives[0].m_Field].m_Label + " that decides whether " + first +
           " is there; a file where it differs from " + layout[node.m_Condition.m_Field].m_Label + " decides";
}

} // namespace

bool AddLayoutErrors(const std::vector<LayoutError>& errors, DiagnosticLog& log) {
    for (const LayoutError& error : errors) {
        if (error.m_Line == 0) {
            log.Add(DiagnosticCode::CannotRead, {}, {}, error.m_Message);
            return false;
        }
        log.Add(DiagnosticCode::BadLayout, PlaceOf(error), {}, error.m_Message);
    }
    return true;
}

void FindLayoutFaults(const Layout& layout, DiagnosticLog& log) {
    std::vector<std::string> words;
    std::optional<EntityType> type;
    for (int value = 0; value < kEntityTypeCount; ++value) {
        words.push_back(ToUtf8(kEntityTypes[value].m_Word));
        if (words.back() == layout.GetName())
            type = static_cast<EntityType>(value);
    }
    if (!type) {
        const std::vector<std::string_view> views(words.begin(), words.end());
        const std::string_view near = NearestWord(layout.GetName(), views);
        log.Add(DiagnosticCode::BadLayout, {}, {},
                "'" + layout.GetName() + "' is no entity type" +
                    (near.empty() ? "" : " (did you mean '" + std::string(near) + "'?)"));
        return;
    }
    const EntityTypeRow& row = *FindEntityType(*type);
    if (row.m_Create == nullptr) {
        log.Add(DiagnosticCode::BadLayout, {}, {},
                "'" + layout.GetName() + "' has no definition: files of this type are never loaded");
        return;
    }
    if (row.m_IsLayoutSettled)
        Warn(log, DiagnosticCode::BadLayout, {},
             "'" + layout.GetName() + "' is built in: this layout is never used for other commands");
    const std::map<std::string, int> here = CountBlocks(layout);
    for (const auto& [name, count] : CountBlocks(*BuiltInLayout(*type))) {
        const auto found = here.find(name);
        const int used = found != here.end() ? found->second : 0;
        if (used == 0)
            Warn(log, DiagnosticCode::BadLayout, {},
                 "the block " + name + " is known to be in files of this type, and the layout does not use it");
        else if (used > count)
            Warn(log, DiagnosticCode::BadLayout, {},
                 "the block " + name + " stands there " + std::to_string(used) + " times");
    }
}

void FindOpenPoints(const Layout& layout, const LayoutCoverage& coverage, DiagnosticLog& log) {
    if (layout.IsAssumed())
        log.Add({DiagnosticCode::Unproven,
                 Severity::Warning,
                 DiagnosticPlace::AtLine(1, 1),
                 {},
                 "that decimals are float and digits are int is assumed; a binary file decides",
                 true});
    std::set<std::pair<int, int>> told; // a record that is used several times stands in the file once
    for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
        const LayoutNode& node = layout[index];
        if (node.m_Line == 0 || !node.m_IsDoubtful || !told.emplace(node.m_Line, 0).second)
            continue;
        Warn(log, DiagnosticCode::Unproven, PlaceOf(node), DoubtOf(layout, index));
    }
    std::map<int, bool> isMet; // by line
    if (coverage.GetSampleCount() > 0) {
        for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
            const LayoutNode& node = layout[index];
            const bool isList = node.m_Kind == LayoutKind::Count && node.m_End > index + 1;
            if (node.m_Line == 0 || (node.m_Kind != LayoutKind::When && !isList))
                continue;
            bool& met = isMet[node.m_Line];
            for (LayoutIndex inner = isList ? index + 1 : index; inner < (isList ? node.m_End : index + 1); ++inner)
                met = met || coverage.IsMet(inner);
        }
    }
    for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
        const LayoutNode& node = layout[index];
        const auto found = isMet.find(node.m_Line);
        if (found == isMet.end() || found->second || !told.emplace(node.m_Line, 1).second)
            continue;
        if (node.m_Kind == LayoutKind::When)
            Warn(log, DiagnosticCode::Unproven, PlaceOf(node), "no sample takes this branch");
        else
            Warn(log, DiagnosticCode::Unproven, PlaceOf(node), "no sample has an element of " + node.m_Label);
    }
    log.SortByPlace();
}

DiagnosticLog WithoutMarks(const DiagnosticLog& log) {
    DiagnosticLog rest;
    for (const Diagnostic& diagnostic : log.GetAll()) {
        if (diagnostic.m_Code != DiagnosticCode::Unproven || diagnostic.m_Severity == Severity::Error)
            rest.Add(diagnostic);
    }
    return rest;
}

} // namespace Corvid

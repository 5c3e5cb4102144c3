#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Explain/FieldPath.h"
#include "Corvid/Explain/TextLines.h"
#include "Corvid/Explain/TextValue.h"
#include "Corvid/Values/ValueTree.h"
#include "Engine/Layout/Conditions.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// Reads a text archive by a layout so that one mistake costs one diagnostic, and reads on behind it.
//
// A field is wanted at the current line. Where another line stands there, it is looked for further down among the lines
// of the record; what is passed over is diagnosed once: as out of order where the record asks for it later, whose value
// then counts, else as unknown. Where it is not found, a line that the record never asks for and whose label is near is
// taken for it, and so are the nested lines of a record whose own line is gone; else it is missing, and nothing is
// passed over.
class TextExplainer {
public:
    // All outlive the explainer. What could be read goes to the tree; a field that could not is left out of it.
    TextExplainer(const Layout& layout, TextLines& lines, DiagnosticLog& log, ValueTree& tree);

    // `isWholeLayout`: the layout tells all that the file may hold, so that what is left is diagnosed.
    void Run(bool isWholeLayout);

private:
    // A record whose fields are being read.
    struct Record {
        const RecordLabels* m_Labels = nullptr;
        std::uint32_t m_Depth = 0; // of its lines
        Record* m_Outer = nullptr;
        LayoutIndex m_OuterNode = 0;                               // its own node among the outer record's
        std::size_t m_OuterPath = 0;                               // the length of the outer record's path
        std::map<std::string_view, std::deque<LineIndex>> m_Early; // lines that came too early, in order
        std::set<std::string_view> m_Mismatched;                   // elements that were too few or too many
        // Lines of the record by label, from where they were gathered on.
        std::optional<std::unordered_map<std::string_view, std::vector<LineIndex>>> m_Lines;
        LineIndex m_LinesEnd = 0; // to where on
    };

    // Where a field stands.
    struct Place {
        enum class Kind { Missing, Line, NestedOnly };

        Kind m_Kind = Kind::Missing;
        LineIndex m_Line = 0;
        bool m_IsMisspelt = false;  // and diagnosed: nothing more is said of its value
        std::size_t m_LabelEnd = 0; // in the line; 0: where its label ends
        bool m_IsEarly = false;     // the current line stays where it is
    };

    // What a line that is passed over may come too early for.
    enum class Passing { Any, NoElements };

    // Fields: TextExplainer.cpp
    void ReadFields(LayoutIndex first, LayoutIndex end, Record& record, const ElementPlace* element);
    void ReadWhen(LayoutIndex when, LayoutIndex end, Record& record, const ElementPlace* element);
    void ReadField(LayoutIndex index, Record& record, const ElementPlace* element);
    void ReadFieldAt(LayoutIndex index, const Place& place, Record& record, const ElementPlace* element);
    void ReadNested(LayoutIndex index, std::uint32_t depth, Record& outer, const ElementPlace* element);
    bool IsDoubled(LineIndex line, Record& record, const ElementPlace* element);
    std::optional<LineIndex> FindRow(std::uint32_t depth, int due) const;
    void ReadMatrix(LayoutIndex index, std::uint32_t depth, Record& record, const ElementPlace* element);
    void EndRecord(Record& record);
    bool StandsWithoutItsLine(const Record& record);

    // Lists: TextExplainerLists.cpp
    void ReadList(LayoutIndex index, Record& record, const ElementPlace* outer);
    void ReadListAt(LayoutIndex index, const Place& place, Record& record, const ElementPlace* outer);
    std::optional<std::int32_t> ReadCount(LayoutIndex index, const Place& place, const ElementPlace* outer,
                                          bool& isBad);
    // Without a first place, the element begins with a condition: what stands at the current line tells.
    void ReadElement(LayoutIndex list, const Place* first, Record& record, const ElementPlace& element);
    bool AlwaysHasField(LayoutIndex list) const;
    void PassOverElements(LayoutIndex list, Record& record, bool isReported, std::int32_t count);
    bool StandsInElement(LayoutIndex list) const;
    bool StandsForNextList(LayoutIndex list, Record& record);
    void NoteMismatch(LayoutIndex list, Record& record);
    std::size_t CountBelow(std::string_view label, Record& record);
    bool IsFirstOfElement(LayoutIndex list, std::string_view label) const;

    // Where a field stands: TextExplainerFinding.cpp
    Place Find(LayoutIndex index, Record& record, const ElementPlace* element);
    Place FindElement(LayoutIndex index, Record& record, const ElementPlace& element, bool isFirst);
    bool EndsWithin(LayoutIndex index, const ElementPlace* element);
    bool AreElementsComplete(LineIndex found, const ElementPlace& element, Record& record);
    std::optional<Place> FindHere(std::string_view label, LayoutIndex index, Record& record);
    std::optional<Place> FindMisspelt(LayoutIndex index, Record& record, const ElementPlace* element);
    bool HasLostItsLine(LayoutIndex index, LineIndex own, const Record& outer);
    bool StandsNested(LayoutIndex index, const Record& outer);
    bool IsOfOuter(std::string_view label, const Record& record) const;
    bool OpensUnindented(std::string_view label, const Record& record) const;
    std::optional<LineIndex> FindBelow(std::string_view label, Record& record);
    bool IsSearchOver(LayoutIndex list, LineIndex line, Record& record, bool isFirst);
    bool StandsHere(LayoutIndex first, LayoutIndex end) const;
    const RecordLabels& LabelsOf(LayoutIndex first, LayoutIndex end);
    std::uint64_t SmallestElementLetters(LayoutIndex first, LayoutIndex end) const;
    bool HasLabel(LineIndex line, std::string_view label) const {
        return line < m_Lines.GetSize() && m_Lines[line].GetLabel() == label;
    }
    bool IsRow(LineIndex line) const { return line < m_Lines.GetSize() && m_Lines[line].GetLabel().starts_with('['); }

    // What is told, and lines that are passed over: TextExplainerReports.cpp
    void ReportMissing(LayoutIndex index, const ElementPlace* element, const std::string& why);
    void PassOver(LineIndex end, LayoutIndex wanted, Record& record, Passing passing = Passing::Any);
    void ReportUnknown(LineIndex line, const Record& record);
    void PassOverStrangers(const Record& record);
    LineIndex NextText(LineIndex line) const;
    DiagnosticPlace PlaceOf(LineIndex line, std::size_t byte) const;
    void Report(DiagnosticCode code, LineIndex line, std::size_t byte, std::string field, std::string message);

    // Lines that stand in the midst of a record that they do not belong to: TextExplainerStrays.cpp
    void SkipStrays(Record& record, LayoutIndex wanted);
    std::optional<LineIndex> FindEndOfStray(Record& record, LayoutIndex wanted);
    LineIndex FindEndOfStrayRecord(const std::vector<LayoutIndex>& nodes, const Record& record, LayoutIndex wanted);
    bool BeginsNested(LayoutIndex wanted, LineIndex line);
    LineIndex FindEndOfNested(LayoutIndex owner, LineIndex line);
    void ReportStray(Record& record);

    const Layout& m_Layout;
    TextLines& m_Lines;
    DiagnosticLog& m_Log;
    ValueTree& m_Tree;
    Conditions m_Conditions;
    FieldPath m_Path;
    LineIndex m_Line = 0;
    std::unordered_set<LineIndex> m_Taken; // lines that were read in front of others they stand behind
    bool m_IsEndReported = false;          // what is missing at the end of the file has one cause
    std::unordered_map<LayoutIndex, std::unique_ptr<RecordLabels>> m_Labels; // by first node
};

} // namespace Corvid

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Corvid/Diagnostics/DiagnosticLog.h"
#include "Corvid/Explain/FieldPath.h"
#include "Corvid/Explain/TextValue.h"
#include "Corvid/Values/ValueTree.h"
#include "Engine/Layout/Conditions.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// Reads a binary archive by a layout and tells what is wrong with it. Values have no labels to find one's place by:
// where a count or the type of an object is wrong, and where the input ends, reading ends with that one diagnostic.
class BinaryExplainer {
public:
    // All outlive the explainer; `bytes` is the whole file, its header included. `isForText`: strings that text cannot
    // hold are errors.
    BinaryExplainer(const Layout& layout, std::string_view bytes, bool isForText, DiagnosticLog& log, ValueTree& tree);

    // Values that nobody can have meant are errors, too.
    void SetStrict() { m_IsStrict = true; }

    void Run();

private:
    static constexpr std::size_t kHeaderSize = 4;

    void ReadFields(LayoutIndex first, LayoutIndex end, const ElementPlace* element);
    void ReadValue(LayoutIndex index, const ElementPlace* element);
    void ReadString(LayoutIndex index, const ElementPlace* element, TextValue& value);
    void ReadList(LayoutIndex index, const ElementPlace* outer);
    // Which branches depend on a field that holds a word: of some of its words, and one for all others.
    enum class Branches { None, OfWords, OfWordsAndOthers };
    Branches BranchesOf(LayoutIndex field) const;
    bool IsNamedByCount(LayoutIndex list);

    template <class Number> Number Take();
    bool Ensure(std::size_t bytes, LayoutIndex index, const ElementPlace* element);
    void ReportImplausible(std::size_t offset, LayoutIndex index, const ElementPlace* element, std::string message);
    void Report(DiagnosticCode code, std::size_t offset, LayoutIndex index, const ElementPlace* element,
                std::string message);

    const Layout& m_Layout;
    std::string_view m_Bytes;
    bool m_IsForText;
    bool m_IsStrict = false;
    DiagnosticLog& m_Log;
    ValueTree& m_Tree;
    Conditions m_Conditions;
    FieldPath m_Path;
    std::size_t m_Offset = kHeaderSize;
    bool m_HasStopped = false;
    bool m_IsMute = false;                                   // what follows may have the cause that was reported
    std::unordered_map<LayoutIndex, bool> m_AreNamedByCount; // lists, as they are met
};

} // namespace Corvid

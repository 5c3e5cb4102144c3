#include "Corvid/Explain/LineDepths.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "Corvid/Explain/RecordLabels.h"
#include "Corvid/Explain/TextLines.h"
#include "Engine/String/NearWord.h"

namespace Corvid {

namespace {

class DepthFinder {
public:
    DepthFinder(const Layout& layout, const TextLines& lines)
        : m_Layout(layout),
          m_Lines(lines),
          m_AreTabsRight(lines.GetIndentedCount() >= lines.GetSize() / kLinesForATab) {
        for (LayoutIndex index = 0; index < layout.GetSize(); ++index) {
            if (layout[index].m_Kind == LayoutKind::Record)
                m_Records[layout[index].m_Label].push_back(index);
            LayoutIndex owner = layout[index].m_Parent;
            while (owner != kNoLayoutIndex && layout[owner].m_Kind != LayoutKind::Record)
                owner = layout[owner].m_Parent;
            std::vector<LayoutIndex>& owners = m_Owners[layout[index].m_Label];
            if (owner != kNoLayoutIndex && (owners.empty() || owners.back() != owner))
                owners.push_back(owner);
        }
    }

    std::vector<std::uint16_t> Run();

private:
    // A record whose lines may follow; several branches of a condition may have its label.
    struct Open {
        std::vector<const RecordLabels*> m_Branches;
        LayoutIndex m_Behind = 0; // the first node that may follow; of the only branch
        std::uint16_t m_Depth = 0;
        bool m_IsAstray = false; // no open record asks for it

        bool AsksFor(std::string_view label) const {
            return std::any_of(m_Branches.begin(), m_Branches.end(),
                               [&](const RecordLabels* branch) { return branch->AsksFor(label); });
        }
    };

    std::uint16_t Place(const ArchiveLine& line);
    std::size_t FindOpen(const ArchiveLine& line, std::string_view label) const;
    bool AsksForNext(const Open& open, std::string_view label, bool isSure) const;
    bool Reopen(std::string_view label);
    bool EnterOwner(std::string_view label);
    std::string_view FindNearLabel(std::string_view label);
    void Enter(std::string_view label);
    const RecordLabels* LabelsOf(LayoutIndex first, LayoutIndex end);

    static constexpr LineIndex kLinesForATab = 8; // one that is indented among so many: tabs are in use
    static constexpr std::size_t kNone = ~std::size_t{0};

    const Layout& m_Layout;
    const TextLines& m_Lines;
    std::vector<Open> m_Open;
    std::vector<Open> m_Closed;                                              // the last ones, each in the one before
    std::size_t m_ClosedAt = 0;                                              // how many were open around them
    std::unordered_map<std::string_view, std::vector<LayoutIndex>> m_Owners; // records by a label that they ask for
    bool m_IsRecordBegun = false;                                            // by the line in front
    std::uint16_t m_RowDepth = 0;
    bool m_AreTabsRight = true;                                               // of the last line that a record asks for
    std::unordered_map<std::string_view, std::vector<LayoutIndex>> m_Records; // by label
    std::unordered_map<LayoutIndex, std::unique_ptr<RecordLabels>> m_Labels;  // by first node
    std::unordered_map<std::string_view, std::string_view> m_Near;            // by what is written
};

std::vector<std::uint16_t> DepthFinder::Run() {
    std::vector<std::uint16_t> depths(m_Lines.GetSize());
    m_Open.push_back({{LabelsOf(0, m_Layout.GetSize())}, 0, 0});
    bool differs = false;
    for (LineIndex index = 0; index < m_Lines.GetSize(); ++index) {
        const ArchiveLine line = m_Lines[index];
        if (line.IsBlank())
            continue;
        depths[index] = Place(line);
        differs = differs || depths[index] != line.m_Depth;
    }
    return differs ? depths : std::vector<std::uint16_t>();
}

std::uint16_t DepthFinder::Place(const ArchiveLine& line) {
    const auto tabs = static_cast<std::uint16_t>(std::min<std::uint32_t>(line.m_Depth, 0xFFFF));
    std::string_view label = line.GetLabel();
    if (label.starts_with('['))
        return m_AreTabsRight && tabs > 0 ? tabs : std::max(tabs, m_RowDepth);
    std::size_t open = FindOpen(line, label);
    const bool mayTabsBeGone = !m_AreTabsRight || (m_IsRecordBegun && tabs < m_Open.back().m_Depth);
    if (open == kNone && mayTabsBeGone && !m_Owners.contains(label)) {
        label = FindNearLabel(label);
        open = FindOpen(line, label);
    }
    m_IsRecordBegun = false;
    if (open == kNone && m_AreTabsRight)
        return tabs;
    if (open == kNone && (Reopen(label) || EnterOwner(label)))
        open = m_Open.size() - 1;
    if (open != kNone && open + 1 < m_Open.size()) {
        m_Closed.assign(std::make_move_iterator(m_Open.begin() + static_cast<std::ptrdiff_t>(open) + 1),
                        std::make_move_iterator(m_Open.end()));
        m_ClosedAt = open + 1;
        m_Open.resize(open + 1);
    } else if (open == kNone && m_Records.contains(label)) {
        const auto astray =
            std::find_if(m_Open.begin(), m_Open.end(), [](const Open& each) { return each.m_IsAstray; });
        m_Open.erase(astray, m_Open.end());
    }
    const std::uint16_t depth = m_Open.back().m_Depth;
    if (open != kNone || m_Records.contains(label))
        Enter(label);
    if (open != kNone && (depth > 0 || tabs > 0))
        m_AreTabsRight = tabs >= depth;
    return std::max(tabs, depth);
}

// The record that the line is one of: as its tabs say, or the innermost that asks for it next, or at all.
std::size_t DepthFinder::FindOpen(const ArchiveLine& line, std::string_view label) const {
    std::size_t next = kNone;
    std::size_t any = kNone;
    for (std::size_t i = m_Open.size(); i-- > 0;) {
        if (!m_Open[i].AsksFor(label))
            continue;
        if (m_AreTabsRight && m_Open[i].m_Depth == line.m_Depth)
            return i;
        any = any == kNone ? i : any;
        if (next == kNone && AsksForNext(m_Open[i], label, any != i))
            next = i;
    }
    return next != kNone ? next : any;
}

// Whether the label may follow. `isSure`: what stands under a condition does not count.
bool DepthFinder::AsksForNext(const Open& open, std::string_view label, bool isSure) const {
    if (open.m_Branches.size() != 1)
        return open.AsksFor(label);
    const std::vector<LayoutIndex>* const nodes = open.m_Branches.front()->FindNodes(label);
    return nodes != nullptr && std::any_of(nodes->begin(), nodes->end(), [&](LayoutIndex node) {
               LayoutIndex around = m_Layout[node].m_Parent;
               while (around != kNoLayoutIndex && m_Layout[around].m_Kind == LayoutKind::Use)
                   around = m_Layout[around].m_Parent;
               const bool isConditional = around != kNoLayoutIndex && m_Layout[around].m_Kind == LayoutKind::When;
               return node >= open.m_Behind && !(isSure && isConditional);
           });
}

// Whether the record that was closed last goes on here: what closed it has strayed into its midst.
bool DepthFinder::Reopen(std::string_view label) {
    for (std::size_t i = m_Closed.size(); i-- > 0 && m_ClosedAt <= m_Open.size();) {
        if (!m_Closed[i].AsksFor(label))
            continue;
        m_Open.resize(m_ClosedAt);
        m_Open.insert(m_Open.end(), std::make_move_iterator(m_Closed.begin()),
                      std::make_move_iterator(m_Closed.begin() + static_cast<std::ptrdiff_t>(i) + 1));
        m_Closed.clear();
        return true;
    }
    return false;
}

// Whether a record with that label may stand here, its own line gone; it is open then.
bool DepthFinder::EnterOwner(std::string_view label) {
    const auto owners = m_Owners.find(label);
    for (std::size_t i = m_Open.size(); i-- > 0 && owners != m_Owners.end();) {
        for (const LayoutIndex owner : owners->second) {
            if (!AsksForNext(m_Open[i], m_Layout[owner].m_Label, false))
                continue;
            m_Open.resize(i + 1);
            Enter(m_Layout[owner].m_Label);
            return true;
        }
    }
    return false;
}

// Of the records that are open; the label itself: none is near.
std::string_view DepthFinder::FindNearLabel(std::string_view label) {
    constexpr std::size_t kMostLabels = 1000; // in a text that is full of them, no slip of the pen is worth the search
    if (m_Near.size() == kMostLabels)
        return label;
    const auto [known, isNew] = m_Near.try_emplace(label, label);
    for (std::size_t i = m_Open.size(); isNew && i-- > 0;) {
        for (const RecordLabels* branch : m_Open[i].m_Branches) {
            const std::string_view nearest = NearestWord(label, branch->GetAll());
            if (!nearest.empty())
                return known->second = nearest;
        }
    }
    return known->second;
}

// What follows a line of the innermost open record: lines of another one, rows, or what the record asks for behind it.
void DepthFinder::Enter(std::string_view label) {
    Open& open = m_Open.back();
    Open nested;
    nested.m_Depth = static_cast<std::uint16_t>(open.m_Depth + 1);
    m_RowDepth = nested.m_Depth;
    const auto enterAll = [&](const std::vector<LayoutIndex>& nodes) {
        for (const LayoutIndex node : nodes) {
            if (m_Layout[node].m_Kind != LayoutKind::Record)
                continue;
            nested.m_Branches.push_back(LabelsOf(node + 1, m_Layout[node].m_End));
            nested.m_Behind = node + 1;
        }
    };
    bool isKnown = false;
    for (const RecordLabels* branch : open.m_Branches) {
        const std::vector<LayoutIndex>* const nodes = branch->FindNodes(label);
        if (nodes == nullptr)
            continue;
        isKnown = true;
        enterAll(*nodes);
        LayoutIndex behind = nodes->back() + 1; // whatever the conditions say
        for (LayoutIndex around = m_Layout[behind - 1].m_Parent;
             around != kNoLayoutIndex && m_Layout[around].m_Kind != LayoutKind::Record;
             around = m_Layout[around].m_Parent) {
            if (m_Layout[around].m_Kind == LayoutKind::Count)
                behind = around + 1; // the next element
        }
        open.m_Behind = behind;
    }
    nested.m_IsAstray = !isKnown;
    if (!isKnown)
        enterAll(m_Records[label]);
    m_IsRecordBegun = !nested.m_Branches.empty();
    if (m_IsRecordBegun)
        m_Open.push_back(std::move(nested));
}

const RecordLabels* DepthFinder::LabelsOf(LayoutIndex first, LayoutIndex end) {
    std::unique_ptr<RecordLabels>& labels = m_Labels[first];
    if (labels == nullptr)
        labels = std::make_unique<RecordLabels>(m_Layout, first, end);
    return labels.get();
}

} // namespace

std::vector<std::uint16_t> FindDepths(const Layout& layout, const TextLines& lines) {
    return DepthFinder(layout, lines).Run();
}

} // namespace Corvid

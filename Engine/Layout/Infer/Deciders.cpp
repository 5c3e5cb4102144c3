#include "Engine/Layout/Infer/Deciders.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string_view>

#include "Engine/Layout/Infer/Presence.h"

namespace Corvid {

namespace {

constexpr std::size_t kMostWords = 64; // that an enumeration has

bool IsIdentifier(std::u16string_view word) {
    const auto isLetter = [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
    };
    return !word.empty() && isLetter(word.front()) && std::all_of(word.begin(), word.end(), [&](char16_t unit) {
        return isLetter(unit) || (unit >= u'0' && unit <= u'9');
    });
}

bool CanDecide(const DraftField& field) {
    if (field.m_Shape != DraftShape::Value)
        return false;
    if (field.m_Kinds.Has(LayoutKind::Bool))
        return field.m_WasSeen[0] && field.m_WasSeen[1];
    return field.m_Kinds.Has(LayoutKind::String) && field.m_Words.size() >= 2 && field.m_Words.size() <= kMostWords &&
           std::all_of(field.m_Words.begin(), field.m_Words.end(), IsIdentifier);
}

// `owners`: by instance of the record that it is seen from, the instance of `holder`, which has the field.
Decider MakeDecider(RecordDraft& holder, std::uint32_t index, const std::vector<std::uint32_t>& owners,
                    std::span<const SampleTree* const> trees) {
    const DraftField& field = holder.m_Fields[index];
    Decider decider{&holder, index, field.m_Kinds.Has(LayoutKind::Bool), {}, owners};
    for (const std::uint32_t owner : owners) {
        if (field.m_Tokens[owner] == kNone) {
            decider.m_Values.push_back(Decider::kAbsent);
            continue;
        }
        const std::string_view value = ValueOf(field, holder, owner, trees);
        if (decider.m_IsBool) {
            decider.m_Values.push_back(value == "TRUE" ? 1 : 0);
        } else {
            const auto word = std::lower_bound(field.m_Words.begin(), field.m_Words.end(), ReadStringText(value));
            decider.m_Values.push_back(static_cast<std::int32_t>(word - field.m_Words.begin()));
        }
    }
    return decider;
}

} // namespace

std::vector<Decider> FindDeciders(RecordDraft& record, std::span<const SampleTree* const> trees) {
    std::vector<Decider> deciders;
    std::vector<std::uint32_t> owners(record.m_Instances.size());
    std::iota(owners.begin(), owners.end(), 0u);
    auto end = static_cast<std::uint32_t>(record.m_Fields.size());
    for (RecordDraft* holder = &record; holder != nullptr; holder = holder->m_Outer) {
        for (std::uint32_t index = end; index-- > 0;) {
            if (CanDecide(holder->m_Fields[index]))
                deciders.push_back(MakeDecider(*holder, index, owners, trees));
        }
        for (std::uint32_t& owner : owners)
            owner = holder->m_Instances[owner].m_Parent;
        end = holder->m_OuterField;
    }
    return deciders;
}

std::vector<const Decider*> VisibleTo(const RecordDraft& record, std::uint32_t field,
                                      const std::vector<Decider>& deciders) {
    std::vector<const Decider*> visible;
    std::set<std::string_view> nearer; // labels
    std::uint32_t end = field;
    for (const RecordDraft* holder = &record; holder != nullptr; holder = holder->m_Outer) {
        for (std::uint32_t index = end; index-- > 0;) {
            const DraftField& earlier = holder->m_Fields[index];
            if (earlier.m_Shape == DraftShape::Record || !nearer.insert(earlier.m_Label).second)
                continue;
            const auto found = std::find_if(deciders.begin(), deciders.end(), [&](const Decider& decider) {
                return decider.m_Record == holder && decider.m_Field == index;
            });
            if (found != deciders.end())
                visible.push_back(&*found);
        }
        end = holder->m_OuterField;
        if (holder->m_Outer != nullptr && holder->m_Outer->m_Fields[end].m_Shape == DraftShape::List)
            nearer.insert(holder->m_Outer->m_Fields[end].m_Label);
    }
    return visible;
}

} // namespace Corvid

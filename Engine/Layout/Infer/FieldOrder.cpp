#include "Engine/Layout/Infer/FieldOrder.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace Corvid {

namespace {

constexpr std::size_t kMostFields = 2'000;            // of one record
constexpr std::size_t kMostTokens = 64 * 1024 * 1024; // fields times instances of one record
constexpr std::size_t kMostCompared = 300;            // fields that wait for each other

// A label and how often it stood before, or the field of the known layout.
struct Key {
    std::string_view m_Label;
    std::uint32_t m_Occurrence = 0;
    LayoutIndex m_Known = kNoLayoutIndex;

    friend auto operator<=>(const Key&, const Key&) = default;
};

struct FieldPlaces {
    Key m_Key;
    std::vector<std::uint32_t> m_Tokens; // by instance
    std::uint32_t m_Earliest = kNone;    // in any instance
    std::set<std::uint32_t> m_Next;      // fields that stand right behind it somewhere
    std::uint32_t m_WaitsFor = 0;        // fields in front of it that are not placed yet
};

class Orderer {
public:
    Orderer(RecordDraft& record, std::span<const SampleTree* const> trees, const KnownLayout* known)
        : m_Record(record), m_Trees(trees), m_Known(known) {}

    std::optional<SampleConflict> Run();

private:
    void AddKnownFields(std::map<Key, std::uint32_t>& known);
    void Follow(std::uint32_t previous, std::uint32_t next);
    bool FindFields();
    std::optional<SampleConflict> DescribeConflict() const;
    void Place(std::uint32_t field);

    RecordDraft& m_Record;
    std::span<const SampleTree* const> m_Trees;
    const KnownLayout* m_Known;
    std::vector<FieldPlaces> m_Fields;
    std::vector<bool> m_IsPlaced;
};

void Orderer::Follow(std::uint32_t previous, std::uint32_t next) {
    if (m_Fields[previous].m_Next.insert(next).second)
        ++m_Fields[next].m_WaitsFor;
}

void Orderer::AddKnownFields(std::map<Key, std::uint32_t>& known) {
    if (m_Known == nullptr)
        return;
    for (const LayoutIndex node : m_Known->FieldsIn(m_Record.m_KnownFirst, m_Record.m_KnownEnd)) {
        const auto index = static_cast<std::uint32_t>(m_Fields.size());
        FieldPlaces& field = m_Fields.emplace_back();
        field.m_Key = {m_Known->GetLayout()[node].m_Label, 0, node};
        field.m_Tokens.assign(m_Record.m_Instances.size(), kNone);
        known.emplace(field.m_Key, index);
        if (index > 0)
            Follow(index - 1, index);
    }
}

// False where there are too many.
bool Orderer::FindFields() {
    std::map<Key, std::uint32_t> known;
    AddKnownFields(known);
    if (m_Fields.size() > kMostFields || m_Fields.size() * m_Record.m_Instances.size() > kMostTokens)
        return false;
    for (std::uint32_t i = 0; i < m_Record.m_Instances.size(); ++i) {
        const DraftInstance& instance = m_Record.m_Instances[i];
        std::map<std::string_view, std::uint32_t> occurrences;
        std::uint32_t previous = kNone;
        for (std::uint32_t token = 0; token < instance.m_Tokens.size(); ++token) {
            const std::uint32_t line = instance.m_Tokens[token].m_Line;
            const std::string_view label = (*m_Trees[instance.m_Sample])[line].m_Label;
            Key key{label, 0, m_Known != nullptr ? m_Known->FieldAt(instance.m_Sample, line) : kNoLayoutIndex};
            if (key.m_Known == kNoLayoutIndex)
                key.m_Occurrence = occurrences[label]++;
            const auto [entry, isNew] = known.try_emplace(key, static_cast<std::uint32_t>(m_Fields.size()));
            if (isNew) {
                if (m_Fields.size() == kMostFields || (m_Fields.size() + 1) * m_Record.m_Instances.size() > kMostTokens)
                    return false;
                m_Fields.emplace_back().m_Key = key;
                m_Fields.back().m_Tokens.assign(m_Record.m_Instances.size(), kNone);
            }
            FieldPlaces& field = m_Fields[entry->second];
            field.m_Tokens[i] = token;
            field.m_Earliest = std::min(field.m_Earliest, token);
            if (previous != kNone)
                Follow(previous, entry->second);
            previous = entry->second;
        }
    }
    return true;
}

void Orderer::Place(std::uint32_t index) {
    FieldPlaces& places = m_Fields[index];
    m_IsPlaced[index] = true;
    for (const std::uint32_t next : places.m_Next)
        --m_Fields[next].m_WaitsFor;

    DraftField& field = m_Record.m_Fields.emplace_back();
    field.m_Label = places.m_Key.m_Label;
    field.m_Known = places.m_Key.m_Known;
    field.m_Tokens = std::move(places.m_Tokens);
    for (const std::uint32_t token : field.m_Tokens)
        field.m_PresentCount += token != kNone ? 1u : 0u;
}

// Two fields that stand in one order here, in the other there; of a longer circle two that wait for each other.
std::optional<SampleConflict> Orderer::DescribeConflict() const {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> before; // the instance that shows it
    for (std::uint32_t i = 0; i < m_Record.m_Instances.size(); ++i) {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> standing; // token, field
        for (std::uint32_t field = 0; field < m_Fields.size(); ++field) {
            if (!m_IsPlaced[field] && m_Fields[field].m_Tokens[i] != kNone)
                standing.emplace_back(m_Fields[field].m_Tokens[i], field);
        }
        std::sort(standing.begin(), standing.end());
        standing.resize(std::min(standing.size(), kMostCompared));
        for (std::size_t first = 0; first < standing.size(); ++first) {
            for (std::size_t second = first + 1; second < standing.size(); ++second) {
                const std::uint32_t a = standing[first].second;
                const std::uint32_t b = standing[second].second;
                before.try_emplace({a, b}, i);
                const auto reverse = before.find({b, a});
                const bool isCircle = reverse != before.end();
                if (!isCircle && i + 1 < m_Record.m_Instances.size())
                    continue;
                const std::uint32_t other = isCircle ? reverse->second : 0;
                const auto placeOf = [&](std::uint32_t instance, std::uint32_t field) {
                    const DraftInstance& holder = m_Record.m_Instances[instance];
                    const std::uint32_t token = m_Fields[field].m_Tokens[instance];
                    return SamplePlace{holder.m_Sample, token == kNone ? 0 : holder.m_Tokens[token].m_Line};
                };
                return SampleConflict{"'" + std::string(m_Fields[b].m_Key.m_Label) + "' stands behind '" +
                                          std::string(m_Fields[a].m_Key.m_Label) + "' here, and in front of it there",
                                      placeOf(i, b), placeOf(other, b), 0};
            }
        }
    }
    return SampleConflict{"the fields of a record stand in different orders", {}, {}, 0};
}

std::optional<SampleConflict> Orderer::Run() {
    if (!FindFields())
        return SampleConflict{"a record has more different labels than a layout can hold", {}, {}, 0};
    m_IsPlaced.assign(m_Fields.size(), false);
    std::uint32_t last = kNone;
    const auto isPresentAlike = [this](std::uint32_t left, const std::vector<std::uint32_t>& right) {
        return std::equal(m_Fields[left].m_Tokens.begin(), m_Fields[left].m_Tokens.end(), right.begin(), right.end(),
                          [](std::uint32_t a, std::uint32_t b) { return (a == kNone) == (b == kNone); });
    };
    for (std::size_t placed = 0; placed < m_Fields.size(); ++placed) {
        // Where the samples leave a choice: what goes on as before, so that fields under one condition stay together.
        std::uint32_t best = kNone;
        std::pair<bool, std::pair<std::uint32_t, Key>> bestRank;
        for (std::uint32_t field = 0; field < m_Fields.size(); ++field) {
            if (m_IsPlaced[field] || m_Fields[field].m_WaitsFor != 0)
                continue;
            const bool goesOn = last != kNone && isPresentAlike(field, m_Record.m_Fields.back().m_Tokens);
            const std::pair rank{!goesOn, std::pair{m_Fields[field].m_Earliest, m_Fields[field].m_Key}};
            if (best == kNone || rank < bestRank) {
                best = field;
                bestRank = rank;
            }
        }
        if (best == kNone)
            return DescribeConflict();
        Place(best);
        last = best;
    }
    return std::nullopt;
}

} // namespace

std::optional<SampleConflict> OrderFields(RecordDraft& record, std::span<const SampleTree* const> trees,
                                          const KnownLayout* known) {
    return Orderer(record, trees, known).Run();
}

std::vector<std::pair<std::uint32_t, std::uint32_t>> FindUnorderedFields(const RecordDraft& record) {
    const std::size_t count = record.m_Fields.size();
    // What stands somewhere behind a field, through any number of samples.
    std::vector<std::vector<bool>> behind(count, std::vector<bool>(count, false));
    std::vector<std::set<std::uint32_t>> next(count);
    for (std::size_t i = 0; i < record.m_Instances.size(); ++i) {
        std::uint32_t previous = kNone; // fields are in an order that every instance keeps
        for (std::uint32_t field = 0; field < count; ++field) {
            if (record.m_Fields[field].m_Tokens[i] == kNone)
                continue;
            if (previous != kNone)
                next[previous].insert(field);
            previous = field;
        }
    }
    for (std::size_t field = count; field-- > 0;) {
        for (const std::uint32_t follower : next[field]) {
            behind[field][follower] = true;
            for (std::size_t i = follower + 1; i < count; ++i) {
                if (behind[follower][i])
                    behind[field][i] = true;
            }
        }
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (std::uint32_t first = 0; first < count; ++first) {
        for (std::uint32_t second = first + 1; second < count; ++second) {
            const bool isKnown =
                record.m_Fields[first].m_Known != kNoLayoutIndex && record.m_Fields[second].m_Known != kNoLayoutIndex;
            if (!behind[first][second] && !isKnown)
                pairs.emplace_back(first, second);
        }
    }
    return pairs;
}

} // namespace Corvid

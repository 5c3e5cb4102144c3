#include "Corvid/Compare/ValueComparison.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

#include "Corvid/Compare/NumberComparison.h"
#include "Engine/Math/Color.h"

namespace Corvid {

namespace {

std::uint32_t PackedColor(std::span<const float> channels) {
    return PackColor({channels[0], channels[1], channels[2], channels[3]});
}

bool IsParent(const ValueNode& node) {
    return node.m_Kind == ValueKind::Record || node.m_Kind == ValueKind::List;
}

constexpr std::uint64_t Mix(std::uint64_t hash, std::uint64_t value) {
    hash = (hash ^ value) * 0x9E3779B97F4A7C15;
    return hash ^ hash >> 32;
}

std::uint64_t BitsOf(float value) {
    return std::isnan(value) ? std::numeric_limits<std::uint64_t>::max() : std::bit_cast<std::uint32_t>(value);
}

} // namespace

ValueComparison::ValueComparison(const ValueTree& before, const ValueTree& after, const CompareOptions& options)
    : m_Before(before), m_After(after), m_Options(options) {
    std::unordered_map<std::string_view, std::uint32_t> labels;
    for (std::uint32_t i = 0; i < before.GetLabelCount(); ++i)
        labels.emplace(before.GetLabel(i), i);
    for (std::uint32_t i = 0; i < after.GetLabelCount(); ++i)
        m_AfterLabels.push_back(
            labels.emplace(after.GetLabel(i), static_cast<std::uint32_t>(labels.size())).first->second);
}

bool ValueComparison::AreSameValues(ValueIndex before, ValueIndex after) const {
    const ValueNode& a = m_Before[before];
    const ValueNode& b = m_After[after];
    if (a.m_Kind != b.m_Kind)
        return false;
    switch (a.m_Kind) {
    case ValueKind::Record:
    case ValueKind::List: // a count tells nothing that its elements do not
        return true;
    case ValueKind::Float:
        return Corvid::AreSame(m_Before.GetFloat(a), m_After.GetFloat(b), m_Options);
    case ValueKind::Double:
        return Corvid::AreSame(m_Before.GetDouble(a), m_After.GetDouble(b), m_Options);
    case ValueKind::String:
        return m_Before.GetString(a) == m_After.GetString(b);
    case ValueKind::Pair:
    case ValueKind::Rect:
        return std::ranges::equal(m_Before.GetInts(a), m_After.GetInts(b));
    case ValueKind::Color:
        if (m_Options.m_AreColorsBytes)
            return PackedColor(m_Before.GetFloats(a)) == PackedColor(m_After.GetFloats(b));
        [[fallthrough]];
    case ValueKind::Vector3:
    case ValueKind::Vector4:
    case ValueKind::Matrix33:
    case ValueKind::Matrix44:
        return std::ranges::equal(m_Before.GetFloats(a), m_After.GetFloats(b),
                                  [this](float x, float y) { return Corvid::AreSame(x, y, m_Options); });
    default:
        return a.m_Bits == b.m_Bits;
    }
}

bool ValueComparison::AreSame(ValueSpan before, ValueSpan after) const {
    if (before.m_End - before.m_Begin != after.m_End - after.m_Begin)
        return false;
    ValueIndex b = after.m_Begin;
    for (ValueIndex a = before.m_Begin; a < before.m_End; ++a, ++b) {
        if (!HaveSameLabel(a, b) || m_Before[a].m_End - a != m_After[b].m_End - b || !AreSameValues(a, b))
            return false;
    }
    return true;
}

double ValueComparison::DistanceOf(ValueIndex before, ValueIndex after) const {
    const ValueNode& a = m_Before[before];
    const ValueNode& b = m_After[after];
    double furthest = 0;
    const auto note = [&](double x, double y) {
        const double distance = Corvid::DistanceOf(x, y);
        if (!(distance <= furthest)) // NaN is further than anything
            furthest = std::isnan(furthest) ? furthest : distance;
    };
    switch (a.m_Kind) {
    case ValueKind::Int:
        note(m_Before.GetInt(a), m_After.GetInt(b));
        break;
    case ValueKind::Int64:
        note(static_cast<double>(m_Before.GetInt64(a)), static_cast<double>(m_After.GetInt64(b)));
        break;
    case ValueKind::Float:
        note(m_Before.GetFloat(a), m_After.GetFloat(b));
        break;
    case ValueKind::Double:
        note(m_Before.GetDouble(a), m_After.GetDouble(b));
        break;
    case ValueKind::Pair:
    case ValueKind::Rect:
        for (std::size_t i = 0; i < m_Before.GetInts(a).size(); ++i)
            note(m_Before.GetInts(a)[i], m_After.GetInts(b)[i]);
        break;
    case ValueKind::Color:
    case ValueKind::Vector3:
    case ValueKind::Vector4:
    case ValueKind::Matrix33:
    case ValueKind::Matrix44:
        for (std::size_t i = 0; i < m_Before.GetFloats(a).size(); ++i)
            note(m_Before.GetFloats(a)[i], m_After.GetFloats(b)[i]);
        break;
    default:
        break;
    }
    return furthest;
}

std::uint64_t ValueComparison::HashBefore(ValueSpan span) const {
    return Hash(m_Before, span, [](std::uint32_t label) { return label; });
}

std::uint64_t ValueComparison::HashAfter(ValueSpan span) const {
    return Hash(m_After, span, [this](std::uint32_t label) { return m_AfterLabels[label]; });
}

template <class LabelOf>
std::uint64_t ValueComparison::Hash(const ValueTree& tree, ValueSpan span, LabelOf labelOf) const {
    std::uint64_t hash = span.m_End - span.m_Begin;
    for (ValueIndex i = span.m_Begin; i < span.m_End; ++i) {
        const ValueNode& node = tree[i];
        hash = Mix(hash, std::uint64_t{labelOf(node.m_Label)} << 8 | static_cast<std::uint64_t>(node.m_Kind));
        hash = Mix(hash, IsParent(node) ? node.m_End - i : HashValue(tree, node));
    }
    return hash;
}

// Floats tell nothing when those that are near are the same.
std::uint64_t ValueComparison::HashValue(const ValueTree& tree, const ValueNode& node) const {
    std::uint64_t hash = 0;
    switch (node.m_Kind) {
    case ValueKind::Float:
        return AreFloatsLoose() ? 0 : BitsOf(tree.GetFloat(node));
    case ValueKind::Double:
        return AreFloatsLoose() || std::isnan(tree.GetDouble(node)) ? 0 : node.m_Bits;
    case ValueKind::String:
        for (const char16_t unit : tree.GetString(node))
            hash = Mix(hash, unit);
        return hash;
    case ValueKind::Pair:
    case ValueKind::Rect:
        for (const std::int32_t number : tree.GetInts(node))
            hash = Mix(hash, static_cast<std::uint32_t>(number));
        return hash;
    case ValueKind::Color:
        if (m_Options.m_AreColorsBytes)
            return PackedColor(tree.GetFloats(node));
        [[fallthrough]];
    case ValueKind::Vector3:
    case ValueKind::Vector4:
    case ValueKind::Matrix33:
    case ValueKind::Matrix44:
        if (!AreFloatsLoose()) {
            for (const float number : tree.GetFloats(node))
                hash = Mix(hash, BitsOf(number));
        }
        return hash;
    default:
        return node.m_Bits;
    }
}

double ValueComparison::LikenessOf(ValueSpan before, ValueSpan after) const {
    std::uint32_t same = 0;
    std::uint32_t all = 0;
    ValueIndex a = before.m_Begin;
    ValueIndex b = after.m_Begin;
    while (a < before.m_End && b < after.m_End) {
        if (HaveSameLabel(a, b) && m_Before[a].m_Kind == m_After[b].m_Kind) {
            if (!IsParent(m_Before[a])) {
                ++all;
                same += AreSameValues(a, b) ? 1 : 0;
            }
            ++a;
            ++b;
        } else { // goes on behind what the longer rest has more
            ++all;
            if (before.m_End - a >= after.m_End - b)
                ++a;
            else
                ++b;
        }
    }
    all += before.m_End - a + (after.m_End - b);
    return all == 0 ? 1 : static_cast<double>(same) / all;
}

} // namespace Corvid

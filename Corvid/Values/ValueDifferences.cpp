#include "Corvid/Values/ValueDifferences.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <optional>

#include "Corvid/Values/ValuePaths.h"
#include "Engine/Math/Color.h"

namespace Corvid {

namespace {

class Comparer {
public:
    Comparer(const ValueTree& a, const ValueTree& b, ColorPrecision colors) : m_A(a), m_B(b), m_Colors(colors) {}

    std::vector<FieldDifference> Run() {
        Compare(0, m_A.GetSize(), 0, m_B.GetSize());
        return TakeResults();
    }

private:
    struct Group {
        ValueIndex m_Index = 0; // of the element with the largest difference
        std::uint64_t m_Count = 0;
        double m_Largest = 0.0;
    };

    void Compare(ValueIndex a, ValueIndex endOfA, ValueIndex b, ValueIndex endOfB);
    void CompareNodes(ValueIndex a, ValueIndex b);
    std::optional<double> DifferenceOf(const ValueNode& a, const ValueNode& b) const; // nothing: they are the same
    std::optional<double> DifferenceOf(std::span<const float> a, std::span<const float> b) const;
    void Note(ValueIndex a, double difference);
    std::vector<FieldDifference> TakeResults() const;

    const ValueTree& m_A;
    const ValueTree& m_B;
    ColorPrecision m_Colors;
    std::vector<std::uint32_t> m_Labels; // the way to the node
    std::map<std::vector<std::uint32_t>, Group> m_Groups;
};

std::optional<double> DifferenceOfFloats(double a, double b) {
    if (std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b)))
        return std::nullopt;
    const double difference = std::fabs(a - b);
    return std::isfinite(difference) ? difference : 0.0;
}

// Siblings pair up by label, in order.
void Comparer::Compare(ValueIndex a, ValueIndex endOfA, ValueIndex b, ValueIndex endOfB) {
    for (; a < endOfA; a = m_A[a].m_End) {
        ValueIndex found = b;
        while (found < endOfB && m_B.GetLabel(m_B[found]) != m_A.GetLabel(m_A[a]))
            found = m_B[found].m_End;
        if (found >= endOfB) {
            Note(a, 0.0);
            continue;
        }
        m_Labels.push_back(m_A[a].m_Label);
        CompareNodes(a, found);
        m_Labels.pop_back();
        b = m_B[found].m_End;
    }
}

void Comparer::CompareNodes(ValueIndex a, ValueIndex b) {
    const ValueNode& nodeA = m_A[a];
    const ValueNode& nodeB = m_B[b];
    if (nodeA.m_Kind != nodeB.m_Kind) {
        Note(a, 0.0);
    } else if (nodeA.m_Kind == ValueKind::List && m_A.GetInt(nodeA) != m_B.GetInt(nodeB)) {
        Note(a, std::fabs(static_cast<double>(m_A.GetInt(nodeA)) - static_cast<double>(m_B.GetInt(nodeB))));
    } else if (nodeA.m_Kind == ValueKind::Record || nodeA.m_Kind == ValueKind::List) {
        Compare(a + 1, nodeA.m_End, b + 1, nodeB.m_End);
    } else if (const std::optional<double> difference = DifferenceOf(nodeA, nodeB)) {
        Note(a, *difference);
    }
}

std::optional<double> Comparer::DifferenceOf(const ValueNode& a, const ValueNode& b) const {
    const auto sameOrNot = [](bool isSame) { return isSame ? std::nullopt : std::optional(0.0); };
    switch (a.m_Kind) {
    case ValueKind::Float:
        return DifferenceOfFloats(static_cast<double>(m_A.GetFloat(a)), static_cast<double>(m_B.GetFloat(b)));
    case ValueKind::Double:
        return DifferenceOfFloats(m_A.GetDouble(a), m_B.GetDouble(b));
    case ValueKind::String:
        return sameOrNot(m_A.GetString(a) == m_B.GetString(b));
    case ValueKind::Color: {
        const auto x = m_A.GetFloats(a);
        const auto y = m_B.GetFloats(b);
        if (m_Colors == ColorPrecision::EightBits &&
            PackColor({x[0], x[1], x[2], x[3]}) == PackColor({y[0], y[1], y[2], y[3]}))
            return std::nullopt;
        return DifferenceOf(x, y);
    }
    case ValueKind::Vector3:
    case ValueKind::Vector4:
    case ValueKind::Matrix33:
    case ValueKind::Matrix44:
        return DifferenceOf(m_A.GetFloats(a), m_B.GetFloats(b));
    case ValueKind::Pair:
    case ValueKind::Rect: {
        const auto x = m_A.GetInts(a);
        const auto y = m_B.GetInts(b);
        return sameOrNot(std::equal(x.begin(), x.end(), y.begin(), y.end()));
    }
    case ValueKind::Int:
    case ValueKind::Int64:
        if (a.m_Bits == b.m_Bits)
            return std::nullopt;
        return std::fabs(static_cast<double>(m_A.GetInt64(a)) - static_cast<double>(m_B.GetInt64(b)));
    default:
        return sameOrNot(a.m_Bits == b.m_Bits);
    }
}

std::optional<double> Comparer::DifferenceOf(std::span<const float> a, std::span<const float> b) const {
    std::optional<double> largest;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (const auto difference = DifferenceOfFloats(static_cast<double>(a[i]), static_cast<double>(b[i])))
            largest = std::max(largest.value_or(0.0), *difference);
    }
    return largest;
}

void Comparer::Note(ValueIndex a, double difference) {
    std::vector<std::uint32_t> key = m_Labels;
    if (key.empty() || key.back() != m_A[a].m_Label)
        key.push_back(m_A[a].m_Label);
    Group& group = m_Groups[std::move(key)];
    if (group.m_Count++ == 0 || difference > group.m_Largest) {
        group.m_Largest = difference;
        group.m_Index = a;
    }
}

std::vector<FieldDifference> Comparer::TakeResults() const {
    std::vector<const Group*> groups;
    for (const auto& entry : m_Groups)
        groups.push_back(&entry.second);
    std::sort(groups.begin(), groups.end(), [](const Group* x, const Group* y) { return x->m_Index < y->m_Index; });
    std::vector<FieldDifference> results;
    auto next = groups.begin();
    for (ValuePaths paths(m_A); !paths.IsAtEnd() && next != groups.end(); paths.Next()) {
        while (next != groups.end() && (*next)->m_Index == paths.GetIndex()) {
            results.push_back({paths.GetPath(), (*next)->m_Count, (*next)->m_Largest});
            ++next;
        }
    }
    return results;
}

} // namespace

std::vector<FieldDifference> CompareValues(const ValueTree& a, const ValueTree& b, ColorPrecision colors) {
    return Comparer(a, b, colors).Run();
}

} // namespace Corvid

#include "Corvid/Layouts/TouchedDoubts.h"

#include <algorithm>

#include "Corvid/Values/ValuePaths.h"
#include "Engine/Layout/Conditions.h"

namespace Corvid {

namespace {

// Walks over the layout and the values that were loaded by it, side by side.
class Walk {
public:
    Walk(const Layout& layout, const ValueTree& values, bool isFromBinary)
        : m_Layout(layout),
          m_Values(values),
          m_IsFromBinary(isFromBinary),
          m_Paths(values),
          m_Conditions(layout),
          m_IsTold(layout.GetSize(), false) {
        m_Trail.m_IsMet.assign(layout.GetSize(), false);
    }

    LayoutTrail Run() {
        Visit(0, m_Layout.GetSize());
        return std::move(m_Trail);
    }

private:
    void Visit(LayoutIndex first, LayoutIndex end) {
        for (LayoutIndex index = first; index < end; index = m_Layout[index].m_End) {
            const LayoutKind kind = m_Layout[index].m_Kind;
            if (kind == LayoutKind::Use)
                Visit(index + 1, m_Layout[index].m_End);
            else if (kind == LayoutKind::When)
                VisitWhen(index);
            else
                VisitValue(index);
        }
    }

    void VisitWhen(LayoutIndex index) {
        const LayoutNode& node = m_Layout[index];
        const bool isUnknown = node.m_Condition.m_Field == kNoLayoutIndex;
        // What is read from binary has none of it, though the next value may have the same label.
        const bool isThere =
            isUnknown ? !m_IsFromBinary && StandsHere(index) : m_Conditions.Holds(index).value_or(false);
        if (isUnknown && m_IsFromBinary)
            Tell(index, "nobody knows when " + FirstLabel(index) + " is there", true);
        if (node.m_IsDoubtful && !isUnknown && node.m_Doubt.m_Alternatives.empty())
            Tell(index, "it is not proven that " + m_Layout[node.m_Condition.m_Field].m_Label + " decides whether " +
                            FirstLabel(index) + " is there");
        for (const LayoutCondition& rival : node.m_Doubt.m_Alternatives) {
            if (!m_Conditions.IsAnyThere(index, rival) || m_Conditions.Holds(index, rival) != isThere)
                Tell(index, "it may be " + m_Layout[rival.m_Field].m_Label + " that decides whether " +
                                FirstLabel(index) + " is there");
        }
        if (!isThere)
            return m_Conditions.Skip(index);
        m_Trail.m_IsMet[index] = true;
        Visit(index + 1, node.m_End);
    }

    void VisitValue(LayoutIndex index) {
        const LayoutNode& node = m_Layout[index];
        const bool isText = node.m_Kind == LayoutKind::Word || node.m_Kind == LayoutKind::String;
        if (m_Paths.IsAtEnd() || m_Values.GetLabel(m_Paths.GetNode()) != node.m_Label ||
            (m_Paths.GetNode().m_Kind == ValueKind::String) != isText)
            return; // of a file that was read with errors
        const ValueNode& value = m_Paths.GetNode();
        m_Trail.m_IsMet[index] = true;
        if (node.m_Kind == LayoutKind::Bool) {
            const bool isTrue = m_Values.GetBool(value);
            const auto& seen = node.m_Doubt.m_SeenBools;
            m_Conditions.Set(index, isTrue);
            if (node.m_IsDoubtful && std::find(seen.begin(), seen.end(), isTrue) == seen.end())
                Tell(index, std::string("nobody has seen it ") + (isTrue ? "TRUE" : "FALSE"));
        } else if (isText) {
            m_Conditions.Set(index, std::u16string(m_Values.GetString(value)));
        } else if (node.m_IsDoubtful && node.m_Doubt.m_IsOfWidth) {
            const std::int64_t number =
                node.m_Kind == LayoutKind::Int ? m_Values.GetInt(value) : m_Values.GetInt64(value);
            const auto& seen = node.m_Doubt.m_SeenNumbers;
            if (number < 0 || (!seen.empty() && std::find(seen.begin(), seen.end(), number) == seen.end()))
                Tell(index, "nothing shows whether it or a number beside it takes 8 bytes, and it is " +
                                std::to_string(number));
        } else if (node.m_Kind == LayoutKind::Int && node.m_IsDoubtful) {
            Tell(index, "it may be a colour");
        } else if (node.m_Kind <= LayoutKind::Double && node.m_IsDoubtful) {
            Tell(index, "no binary file shows how many bytes it takes");
        } else if (node.m_Kind == LayoutKind::Color && node.m_IsDoubtful) {
            Tell(index, "it may be a number");
        } else if (node.m_Kind == LayoutKind::Count && node.m_IsDoubtful) {
            const std::int32_t count = m_Values.GetInt(value);
            const auto& seen = node.m_Doubt.m_SeenNumbers;
            if (std::find(seen.begin(), seen.end(), count) == seen.end())
                Tell(index, "it may be a plain number: nobody has seen " + std::to_string(count));
        }
        const ValueIndex end = value.m_End;
        m_Paths.Next();
        if (node.m_Kind == LayoutKind::Record) {
            Visit(index + 1, node.m_End);
        } else if (node.m_Kind == LayoutKind::Count && node.m_End > index + 1) {
            while (m_Paths.GetIndex() < end) {
                const ValueIndex before = m_Paths.GetIndex();
                Visit(index + 1, node.m_End);
                if (m_Paths.GetIndex() == before) // elements in which nothing stands
                    break;
            }
        }
    }

    bool StandsHere(LayoutIndex when) const {
        return !m_Paths.IsAtEnd() && m_Values.GetLabel(m_Paths.GetNode()) == FirstLabel(when);
    }

    std::string FirstLabel(LayoutIndex when) const {
        for (LayoutIndex index = when + 1; index < m_Layout[when].m_End; ++index) {
            if (!m_Layout[index].m_Label.empty())
                return m_Layout[index].m_Label;
        }
        return "something";
    }

    void Tell(LayoutIndex index, std::string why, bool isBeyondHelp = false) {
        if (m_IsTold[index])
            return;
        m_IsTold[index] = true;
        const bool hasLabel = !m_Layout[index].m_Label.empty();
        m_Trail.m_Touched.push_back(
            {index, hasLabel ? m_Paths.GetPath() : std::string(), std::move(why), isBeyondHelp});
    }

    const Layout& m_Layout;
    const ValueTree& m_Values;
    bool m_IsFromBinary;
    ValuePaths m_Paths;
    Conditions m_Conditions;
    std::vector<bool> m_IsTold;
    LayoutTrail m_Trail;
};

} // namespace

LayoutTrail FollowLayout(const Layout& layout, const ValueTree& values, bool isFromBinary) {
    return Walk(layout, values, isFromBinary).Run();
}

} // namespace Corvid

#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "Corvid/Values/ValueTree.h"
#include "Engine/Archive/NullArchive.h"

namespace Corvid {

// The archive beneath an object's Save() that makes a tree of its values.
class ValueTreeWriter final : public NullArchive {
public:
    explicit ValueTreeWriter(ValueTree& tree, bool areAsStored = false) : m_Tree(tree), m_AreAsStored(areAsStored) {}

    void WriteColor(Label label, const Color& value) override;
    void WriteIntRect(Label label, const IntRect& value) override;
    void WriteIntPair(Label label, const IntPair& value) override;
    void WriteIntPair(Label label, std::int32_t first, std::int32_t second) override;
    void WriteVector4(Label label, const Vector4& value) override;
    void WriteMatrix44(Label label, const Matrix44& value) override;
    void WriteMatrix33(Label label, const Matrix33& value) override;
    void WriteVector3(Label label, const Vector3& value) override;
    void WriteString(Label label, const char16_t* value) override;
    void WriteInt64(Label label, std::int64_t value) override;
    void WriteBool(Label label, bool value) override;
    void WriteDouble(Label label, double value) override;
    void WriteFloat(Label label, float value) override;
    void WriteInt(Label label, std::int32_t value) override;
    void WriteInt(Label label, std::uint32_t value) override;
    void WriteObject(const Archivable& object) override;
    void WriteLabeledObject(Label label, const Archivable& object) override;
    void BeginList(Label countLabel, std::span<const Label> elementLabels) override;
    void EndList() override { m_Tree.EndList(); }
    bool TakesAsStored() const override { return m_AreAsStored; }

private:
    struct LabelWords {
        std::uint64_t m_Words[2];
    };

    ValueTree::TreeLabel LabelOf(Label label) {
        // To compare what a label consists of is cheaper than to ask for its text.
        const auto [words] = std::bit_cast<LabelWords>(label);
        const std::uint32_t guess = m_Tree.GuessNextLabel();
        const bool isKnown = guess < m_Words.size() &&
                             ((m_Words[guess].m_Words[0] ^ words[0]) | (m_Words[guess].m_Words[1] ^ words[1])) == 0;
        return ValueTree::TreeLabel(isKnown ? guess : NumberOf(label));
    }
    std::uint32_t NumberOf(Label label);

    ValueTree& m_Tree;
    bool m_AreAsStored;
    std::vector<LabelWords> m_Words; // by number of the label
};

// Of anything that saves itself: a record, or the object of a kind. What a file of it would hold.
template <class Saved> ValueTree ValuesOf(const Saved& saved) {
    ValueTree tree;
    ValueTreeWriter writer(tree);
    saved.Save(writer);
    tree.Finish();
    return tree;
}

// The same, but with the lists that the file held that it was loaded from. `nodes`: about how many values these are.
template <class Saved> ValueTree StoredValuesOf(const Saved& saved, std::size_t nodes = 0) {
    ValueTree tree;
    tree.Reserve(nodes);
    ValueTreeWriter writer(tree, true);
    saved.Save(writer);
    tree.Finish();
    return tree;
}

} // namespace Corvid

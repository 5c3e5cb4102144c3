#pragma once

#include "Corvid/Values/ValueTree.h"
#include "Engine/Archive/NullArchive.h"

namespace Corvid {

// The archive beneath an object's Load() that hands out the values of a tree, in order. A value that the tree does not
// have next, by label and kind, leaves its target alone; nothing is reported.
class ValueTreeReader final : public NullArchive {
public:
    explicit ValueTreeReader(const ValueTree& tree) : m_Tree(tree) {}

    void ReadColor(Label label, Color& value) override;
    void ReadIntRect(Label label, IntRect& value) override;
    void ReadIntPair(Label label, IntPair& value) override;
    void ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) override;
    void ReadVector4(Label label, Vector4& value) override;
    void ReadMatrix44(Label label, Matrix44& value) override;
    void ReadMatrix33(Label label, Matrix33& value) override;
    void ReadVector3(Label label, Vector3& value) override;
    void ReadString(Label label, char16_t* buffer, int capacity) override;
    void ReadInt64(Label label, std::int64_t& value) override;
    void ReadBool(Label label, bool& value) override;
    void ReadDouble(Label label, double& value) override;
    void ReadFloat(Label label, float& value) override;
    void ReadInt(Label label, std::int32_t& value) override;
    void ReadInt(Label label, std::uint32_t& value) override;
    void ReadObject(Archivable& object) override { object.Load(*this); }
    void ReadLabeledObject(Label label, Archivable& object, void* context) override;
    void ReadLabeledObject(Label label, Archivable& object) override { ReadLabeledObject(label, object, nullptr); }

    std::optional<bool> IsNext(Label label) override;
    // An element takes at least one node. Counts of a tree are no claims otherwise.
    ElementRoom GetRoom(const ElementSize&) const override { return {1, m_Tree.GetSize() - m_Next}; }

private:
    const ValueNode* Take(Label label, ValueKind kind);

    const ValueTree& m_Tree;
    ValueIndex m_Next = 0;
};

} // namespace Corvid

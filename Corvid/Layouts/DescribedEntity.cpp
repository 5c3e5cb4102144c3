#include "Corvid/Layouts/DescribedEntity.h"

#include "Engine/Archive/FieldListener.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

constexpr Label kTypeLabel = u"entityType";

} // namespace

void DescribedEntity::Load(Archive& archive) {
    ReadValue(archive, kTypeLabel, m_TypeWord);
    if (ToUtf8(m_TypeWord.GetView()) != GetLayout().GetName())
        ReportMessage(Message::UnknownEnumWord, {m_TypeWord.GetView()});
    m_Record.Load(archive);
}

void DescribedEntity::Save(Archive& archive) const {
    WriteValue(archive, kTypeLabel, m_TypeWord);
    m_Record.Save(archive);
}

void DescribedEntity::ListFields(FieldListener& listener) const {
    const std::u16string word = ToUtf16(GetLayout().GetName());
    const EnumWord words[] = {word.c_str()};
    FieldShape shape;
    shape.m_Kind = FieldKind::Word;
    shape.m_Capacity = kWordCapacity;
    shape.m_Words = words;
    shape.m_IsInvalidAWord = false;
    listener.Value(kTypeLabel, shape);
    m_Record.ListFields(listener);
}

Layout WithTypeWord(const Layout& layout) {
    LayoutBuilder builder;
    LayoutNode& type = builder.GetNode(builder.Add(LayoutKind::Word, "entityType"));
    type.m_Words = {ToUtf16(layout.GetName())};
    type.m_Capacity = kWordCapacity;
    builder.AddAll(layout.GetNodes());
    for (LayoutIndex index = 1; index < builder.GetSize(); ++index) {
        LayoutNode& node = builder.GetNode(index);
        if ((node.m_Kind == LayoutKind::String || node.m_Kind == LayoutKind::Word) && node.m_Capacity == 0)
            node.m_Capacity = RecordPlan::kStringCapacity;
    }
    return builder.Finish(layout.GetName(), layout.IsAssumed());
}

} // namespace Corvid

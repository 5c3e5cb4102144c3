#include "Engine/Archive/FieldProbe.h"

#include <typeinfo>

#include "Engine/String/ClassName.h"

namespace Corvid {

void FieldProbe::ReadString(Label label, char16_t*, int capacity) {
    if (m_Facts.m_Capacity == 0)
        m_Facts.m_Capacity = capacity;
    Tell(label, FieldKind::String);
}

void FieldProbe::ReadLabeledObject(Label label, Archivable& object) {
    m_Listener.BeginRecord(label, ClassNameOf(typeid(object)));
    object.ListFields(m_Listener);
    m_Listener.EndRecord();
}

void FieldProbe::Tell(Label label, FieldKind kind) {
    m_Facts.m_Kind = kind;
    m_Listener.Value(label, m_Facts);
}

} // namespace Corvid

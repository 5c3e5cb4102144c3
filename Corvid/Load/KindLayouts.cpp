#include "Corvid/Load/KindLayouts.h"

#include "Engine/Layout/LayoutLister.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"
#include "Kinds/KindObject.h"

namespace Corvid {

namespace {

Layout MakeLayout(Kind kind) {
    return LayoutOf(std::string(WordOf(kind)), *CreateKindObject(kind, u""));
}

} // namespace

const Layout& LayoutOfKind(Kind kind) {
    static const Layout kLayouts[] = {MakeLayout(Kind::Mesh), MakeLayout(Kind::Particle), MakeLayout(Kind::Brushes),
                                      MakeLayout(Kind::Entity)};
    return kLayouts[static_cast<std::size_t>(kind)];
}

Layout LayoutOfEntityType(EntityType type) {
    EntityObject object(u"");
    object.m_Definition = CreateEntityDef(type, EntityDefName());
    return LayoutOf(ToUtf8(WordOf(type)), object);
}

} // namespace Corvid

#include "Kinds/BuiltInLayouts.h"

#include <memory>
#include <string>

#include "Engine/Layout/LayoutLister.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

namespace {

// Every block that a definition of the type table has is found there, so no list of them can fall behind.
LayoutBlocks FindBlocks() {
    LayoutBlocks blocks;
    for (int value = 0; value < kEntityTypeCount; ++value) {
        const auto layout = BuiltInLayout(static_cast<EntityType>(value));
        if (!layout)
            continue;
        for (LayoutIndex index = 0; index < layout->GetSize(); ++index) {
            const LayoutNode& node = (*layout)[index];
            if (node.m_Kind != LayoutKind::Use || blocks.Find(node.m_Name) != nullptr)
                continue;
            LayoutBuilder builder;
            builder.AddAll(layout->GetNodes().subspan(index + 1, node.m_End - index - 1), index + 1);
            blocks.Add(builder.Finish(node.m_Name));
        }
    }
    return blocks;
}

} // namespace

const LayoutBlocks& BuiltInBlocks() {
    static const LayoutBlocks blocks = FindBlocks();
    return blocks;
}

std::optional<Layout> BuiltInLayout(EntityType type) {
    const std::unique_ptr<EntityDef> definition = CreateEntityDef(type, EntityDefName());
    if (definition == nullptr)
        return std::nullopt;
    return LayoutOf(ToUtf8(WordOf(type)), *definition);
}

} // namespace Corvid

#include "Corvid/Load/RawValues.h"

#include <utility>

#include "Corvid/Explain/BinaryExplainer.h"
#include "Corvid/Explain/TextExplainer.h"
#include "Corvid/Layouts/DescribedEntity.h"
#include "Corvid/Load/Encoding.h"
#include "Corvid/Load/KindLayouts.h"
#include "Engine/String/NumberScan.h"

namespace Corvid {

std::optional<ValueTree> ReadRawValues(const std::string& bytes, const LoadedFile& file) {
    std::optional<Layout> entityLayout;
    if (file.m_Kind == Kind::Entity) {
        if (const auto* const described = dynamic_cast<const DescribedEntity*>(file.m_Object.get()))
            entityLayout = WithTypeWord(described->GetLayout());
        else if (const auto* const entity = dynamic_cast<const EntityObject*>(file.m_Object.get()))
            entityLayout = LayoutOfEntityType(entity->m_Definition->GetType());
        else
            return std::nullopt;
    }
    const Layout& layout = entityLayout ? *entityLayout : LayoutOfKind(*file.m_Kind);
    DiagnosticLog ignored;
    ValueTree tree;
    if (file.m_Encoding == ArchiveFormat::Text) {
        std::string storage = bytes;
        storage.reserve(storage.size() + kScanPadding);
        std::string converted;
        TextLines lines(TextOf(storage, converted));
        TextExplainer(layout, lines, ignored, tree).Run(true);
    } else {
        BinaryExplainer(layout, bytes, false, ignored, tree).Run();
    }
    return tree;
}

} // namespace Corvid

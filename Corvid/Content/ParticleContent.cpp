#include "Corvid/Content/ParticleContent.h"

#include "Corvid/Content/NameChecks.h"
#include "Corvid/Values/ValuePaths.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

void CheckParticleContent(const ValueTree& values, DiagnosticLog& log) {
    NameChecks emitters(log);
    ValueIndex emitter = 0; // whose own fields come next
    for (ValuePaths paths(values); !paths.IsAtEnd(); paths.Next()) {
        const ValueNode& node = paths.GetNode();
        const std::string_view label = values.GetLabel(node);
        if (label == "EmitterContents" && node.m_Kind == ValueKind::Record) {
            emitter = paths.GetIndex() + 1;
        } else if (label == "Name" && paths.GetIndex() == emitter) { // the first field
            emitters.Add(paths.GetPath(), values.GetString(node));
        } else if (label == "attachedEmitterName" && node.m_Kind == ValueKind::String) {
            const std::u16string_view name = values.GetString(node);
            if (!emitters.Has(name)) // emitters stand in front of affectors
                log.Add(DiagnosticCode::Unattached, {}, paths.GetPath(),
                        "no emitter has the name '" + ToUtf8(name) + "'");
        }
    }
}

} // namespace Corvid

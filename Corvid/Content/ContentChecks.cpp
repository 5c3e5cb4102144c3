#include "Corvid/Content/ContentChecks.h"

#include "Corvid/Content/BrushesContent.h"
#include "Corvid/Content/FiniteValues.h"
#include "Corvid/Content/MeshContent.h"
#include "Corvid/Content/ParticleContent.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

void CheckContent(const KindObject& object, DiagnosticLog& log) {
    if (object.GetKind() == Kind::Mesh) {
        if (const auto* mesh = dynamic_cast<const MeshObject*>(&object))
            CheckMeshContent(mesh->m_Data, log);
        return;
    }
    const ValueTree values = ValuesOf(object);
    CheckFiniteValues(values, log);
    if (object.GetKind() == Kind::Particle)
        CheckParticleContent(values, log);
    else if (object.GetKind() == Kind::Brushes)
        CheckBrushesContent(values, log);
}

} // namespace Corvid

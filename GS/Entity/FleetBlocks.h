#pragma once

#include "GS/Entity/BlockDef.h"

namespace Corvid {

enum class CohesionRange { Invalid = -1, None, Near, Far };

template <> struct EnumWords<CohesionRange> { static constexpr EnumWord Words[] = {u"None", u"Near", u"Far"}; };

class IFleetDefinition final : public Record<IFleetDefinition> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"defaultCohesionRange", self.m_DefaultCohesionRange); }

private:
    CohesionRange m_DefaultCohesionRange = CohesionRange::Invalid;
};

using FleetDef = BlockDef<IFleetDefinition>;

class IFormationDefinition final : public Record<IFormationDefinition> {
public:
    static void Fields(auto&, auto&) {}
};

using FormationDef = BlockDef<IFormationDefinition>;

} // namespace Corvid

#pragma once

#include "GS/Entity/EntityDef.h"

namespace Corvid {

enum class CohesionRange { Invalid = -1, None, Near, Far };

template <> struct EnumWords<CohesionRange> { static constexpr EnumWord Words[] = {u"None", u"Near", u"Far"}; };

class IFleetDefinition final : public Record<IFleetDefinition> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"defaultCohesionRange", self.m_DefaultCohesionRange); }

private:
    CohesionRange m_DefaultCohesionRange = CohesionRange::Invalid;
};

class FleetDef final : public Record<FleetDef, EntityDef> {
public:
    static void Fields(auto& self, auto& fields) { fields.Block(self.m_Fleet); }

private:
    IFleetDefinition m_Fleet;
};

class IFormationDefinition final : public Record<IFormationDefinition> {
public:
    static void Fields(auto&, auto&) {}
};

class FormationDef final : public Record<FormationDef, EntityDef> {
public:
    static void Fields(auto& self, auto& fields) { fields.Block(self.m_Formation); }

private:
    IFormationDefinition m_Formation;
};

} // namespace Corvid

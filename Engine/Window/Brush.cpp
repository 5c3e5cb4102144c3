#include "Engine/Window/Brush.h"

#include <algorithm>

namespace Corvid {

void Brush::ReturnTextures() {
    for (StateInfo& state : m_States)
        state.ReturnTexture();
}

BrushContent Brush::DeriveContent() const {
    const bool hasMargins = !m_StretchMargins.AreZero() || !m_ContentMargins.AreZero();
    const bool statesDiffer = std::any_of(m_States.begin() + 1, m_States.end(),
                                          [this](const StateInfo& state) { return !state.LooksLike(m_States[0]); });
    if (hasMargins)
        return statesDiffer ? BrushContent::MarginsAndStates : BrushContent::Margins;
    return statesDiffer ? BrushContent::States : BrushContent::Simple;
}

void Brush::GiveAllStatesTheFirst() {
    std::fill(m_States.begin() + 1, m_States.end(), m_States[0]);
}

} // namespace Corvid

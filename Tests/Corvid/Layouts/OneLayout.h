#pragma once

#include <memory>
#include <string>

#include "Engine/Layout/LayoutLibrary.h"
#include "Engine/Layout/LayoutParser.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

// A library of one layout, whatever type it is asked for.
class OneLayout final : public LayoutSource {
public:
    explicit OneLayout(const std::string& text) : m_Layout(std::make_shared<LibraryLayout>()) {
        ParsedLayout parsed = ParseLayout(text, BuiltInBlocks());
        m_Layout->m_Path = u"Quest.layout";
        m_Layout->m_Errors = parsed.m_Errors;
        if (parsed.m_Layout)
            m_Layout->m_Plan = std::make_shared<RecordPlan>(*parsed.m_Layout);
    }

    std::shared_ptr<const LibraryLayout> Find(std::string_view) const override { return m_Layout; }

private:
    std::shared_ptr<LibraryLayout> m_Layout;
};

} // namespace Corvid

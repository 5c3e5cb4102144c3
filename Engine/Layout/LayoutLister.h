#pragma once

#include <string>
#include <utility>

#include "Engine/Archive/FieldListener.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// Makes the layout of a compiled record out of its own field list.
class LayoutLister final : public FieldListener {
public:
    void Value(Label label, const FieldShape& shape) override;
    void BeginRecord(Label label, std::string_view name) override;
    void EndRecord() override { m_Builder.End(); }
    void BeginBlock(std::string_view name) override;
    void EndBlock() override { m_Builder.End(); }
    void BeginList(Label countLabel, const ListShape& shape) override;
    void EndList() override { m_Builder.End(); }
    void BeginWhen(Label label, std::span<const EnumWord> words, bool isNegated) override;
    void EndWhen() override { m_Builder.End(); }

    Layout Finish(std::string name) { return m_Builder.Finish(std::move(name)); }

private:
    LayoutBuilder m_Builder;
};

// Of anything that lists its fields: a record, or the object of a kind.
template <class Listed> Layout LayoutOf(std::string name, const Listed& listed) {
    LayoutLister lister;
    listed.ListFields(lister);
    return lister.Finish(std::move(name));
}

} // namespace Corvid

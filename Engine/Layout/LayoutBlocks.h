#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "Engine/Layout/Layout.h"

namespace Corvid {

// Blocks that layouts can use by name. Who knows the records makes the table.
class LayoutBlocks {
public:
    // The first block of a name stays.
    void Add(Layout block) {
        std::string name = block.GetName();
        m_Blocks.try_emplace(std::move(name), std::move(block));
    }

    // Null: there is none of this name.
    const Layout* Find(std::string_view name) const {
        const auto found = m_Blocks.find(name);
        return found != m_Blocks.end() ? &found->second : nullptr;
    }

    auto begin() const { return m_Blocks.begin(); } // pairs of name and layout, by name
    auto end() const { return m_Blocks.end(); }

private:
    std::map<std::string, Layout, std::less<>> m_Blocks;
};

} // namespace Corvid

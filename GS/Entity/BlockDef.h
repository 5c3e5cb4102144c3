#pragma once

#include <tuple>

#include "GS/Entity/EntityDef.h"

namespace Corvid {

// A definition that is its list of blocks: their fields follow each other in the file, in this order.
template <class... Blocks> class BlockDef final : public Record<BlockDef<Blocks...>, EntityDef> {
public:
    static void Fields(auto& self, auto& fields) {
        std::apply([&fields](auto&... blocks) { (fields.Block(blocks), ...); }, self.m_Blocks);
    }

private:
    std::tuple<Blocks...> m_Blocks;
};

} // namespace Corvid

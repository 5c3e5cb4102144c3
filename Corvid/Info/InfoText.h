#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "Corvid/Info/FileInfo.h"

namespace Corvid {

// Files and bytes by kind; "unknown" for what is none.
struct InfoTotals {
    struct Total {
        std::uint64_t m_Files = 0;
        std::uint64_t m_Bytes = 0;
    };
    std::map<std::string, Total> m_Kinds;

    void Add(const FileInfo& info);
    Total GetAll() const;
};

// One screen for people; long lists are cut.
void AppendInfoText(std::string& text, std::string_view printedPath, const FileInfo& info);
void AppendTotalsText(std::string& text, const InfoTotals& totals);

// One object with the line's end; Docs/Info.md describes its members.
void AppendInfoJson(std::string& text, std::string_view path, const FileInfo& info);
void AppendTotalsJson(std::string& text, const InfoTotals& totals);

} // namespace Corvid

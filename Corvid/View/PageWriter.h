#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "Corvid/View/PageAssets.h"
#include "Corvid/View/ViewEntry.h"

namespace Corvid {

// Writes one page from its first byte to its last; of the entries only what the list shows is kept until the end.
//
// All that comes from files stands in script elements of data types, base64 or JSON without '<', which no browser
// takes for markup or runs; a policy in the page's head allows its own scripts, by their hashes, and nothing else.
class PageWriter {
public:
    // False: the bytes could not be taken, and no more are wanted.
    using Sink = std::function<bool(std::string_view bytes)>;

    // Above `maxSize` bytes nothing more goes into the sink, but the size is counted on.
    PageWriter(const PageAssets& assets, std::uint64_t maxSize, Sink sink);

    void Add(const ViewEntry& entry);
    void Finish();

    std::uint64_t GetSize() const { return m_Size; } // bytes
    bool IsTooLarge() const { return m_Size > m_MaxSize; }
    bool HasFailed() const { return m_HasFailed; } // a sink that took no more

private:
    void Write(std::string_view bytes);
    std::string_view TemplateUntil(std::string_view place); // takes it from the template, with the mark behind it
    void WriteBlock(std::string_view name, std::string_view type, std::string_view content);

    const PageAssets& m_Assets;
    std::uint64_t m_MaxSize;
    Sink m_Sink;
    std::string_view m_Template; // what is left of it
    std::uint64_t m_Size = 0;
    bool m_HasFailed = false;
    bool m_HasModel = false;
    int m_EntryCount = 0;
    std::string m_Files; // the index's, as JSON
};

} // namespace Corvid

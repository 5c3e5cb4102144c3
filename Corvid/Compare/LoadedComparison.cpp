#include "Corvid/Compare/LoadedComparison.h"

#include <future>

#include "Corvid/Compare/TreeComparison.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

namespace {

// Not fewer than there are in files of many vertices, whose vertices take 108 bytes or some 200 letters for 9 values.
std::size_t CountOfValues(const LoadedFile& file) {
    return static_cast<std::size_t>(file.m_Size) / (file.m_Encoding == ArchiveFormat::Text ? 12 : 3);
}

ValueTree TreeOf(const LoadedFile& file) {
    return StoredValuesOf(*file.GetBest(), CountOfValues(file));
}

} // namespace

std::string CompareLoaded(const LoadedFile& before, const LoadedFile& after, CompareOptions options, std::launch launch,
                          DifferenceSink& sink) {
    if (!before.m_Kind || !after.m_Kind)
        return "only data files of a known kind can be compared";
    if (*before.m_Kind != *after.m_Kind)
        return "only files of one kind can be compared, and these are of the kinds " +
               std::string(WordOf(*before.m_Kind)) + " and " + std::string(WordOf(*after.m_Kind));
    if (before.GetBest() == nullptr || after.GetBest() == nullptr)
        return {};
    options.m_AreColorsBytes = before.m_Encoding == ArchiveFormat::Text || after.m_Encoding == ArchiveFormat::Text;
    std::future<ValueTree> beforeTree = std::async(launch, [&] { return TreeOf(before); });
    const ValueTree afterTree = TreeOf(after);
    CompareTrees(beforeTree.get(), afterTree, options, sink);
    return {};
}

} // namespace Corvid

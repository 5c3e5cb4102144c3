#include "Corvid/Compare/LoadedComparison.h"

#include "Corvid/Compare/TreeComparison.h"
#include "Corvid/Values/ValueTreeWriter.h"

namespace Corvid {

std::string CompareLoaded(const LoadedFile& before, const LoadedFile& after, CompareOptions options,
                          DifferenceSink& sink) {
    if (!before.m_Kind || !after.m_Kind)
        return "only data files of a known kind can be compared";
    if (*before.m_Kind != *after.m_Kind)
        return "only files of one kind can be compared, and these are of the kinds " +
               std::string(WordOf(*before.m_Kind)) + " and " + std::string(WordOf(*after.m_Kind));
    if (before.GetBest() == nullptr || after.GetBest() == nullptr)
        return {};
    options.m_AreColorsBytes = before.m_Encoding == ArchiveFormat::Text || after.m_Encoding == ArchiveFormat::Text;
    CompareTrees(StoredValuesOf(*before.GetBest()), StoredValuesOf(*after.GetBest()), options, sink);
    return {};
}

} // namespace Corvid

#pragma once

#include <string>

#include "Engine/Archive/ArchiveValues.h"
#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Archive/LabelText.h"

namespace Corvid {

inline std::string Narrow(std::u16string_view ascii) {
    return std::string(ascii.begin(), ascii.end());
}

inline std::string Narrow(Label label) {
    return std::string(std::string_view(LabelText(label)));
}

// What stands behind the label in a text archive, without needless white space and decimals.
std::string TidyValueText(const std::string& archive, const std::string& label);

template <class T> std::string ValueText(Label label, const T& value) {
    std::string bytes;
    FileArchiveSystem archives;
    auto archive = archives.OpenForWriting(File::WriteToMemory(u"", bytes), ArchiveFormat::Text);
    WriteValue(*archive, label, value);
    archives.Release(std::move(archive));
    return TidyValueText(bytes, Narrow(label));
}

} // namespace Corvid

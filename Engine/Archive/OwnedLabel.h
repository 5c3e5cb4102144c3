#pragma once

#include <memory>
#include <string_view>

#include "Engine/Archive/Label.h"

namespace Corvid {

// A label that is made at run time, from a name that a file or a person gave, with the characters it stands on. Every
// archive takes it like one made by the compiler; matching and writing a long one takes no longer than its letters do.
class OwnedLabel {
public:
    // Whether `text` can be a label: 1 to Label::kMaxLength characters of printable ASCII, the first of them no blank.
    static bool IsLabel(std::string_view text);

    // What cannot be a label is reported; of such a text a label is made that no sound file has.
    explicit OwnedLabel(std::string_view text);

    // Valid while this object, or one that it was moved to, lives.
    operator Label() const { return m_Label; }

private:
    std::unique_ptr<const char16_t[]> m_LongText; // null for a short label
    Label m_Label;
};

} // namespace Corvid

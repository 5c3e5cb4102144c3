#pragma once

#include <span>
#include <string>
#include <vector>

#include "Engine/Layout/Infer/Sample.h"
#include "Engine/Layout/Layout.h"
#include "Engine/Layout/LayoutBlocks.h"

namespace Corvid {

// Something about samples that keeps them, or all of their type, from making a layout. With a second place the two
// contradict each other.
struct InferenceProblem {
    struct Place {
        std::string m_Sample; // its name; empty: no sample in particular
        int m_Line = 0;       // physical, from 1; 0: none
    };

    std::string m_Message;
    Place m_Place;
    Place m_Other;
};

// A mark of a layout in words: where it stands, what is known, and what would settle it.
struct InferredMark {
    LayoutIndex m_Node = 0;
    std::string m_Field;  // path of labels, joined by dots
    std::string m_Advice; // "0 in 14 samples; a binary file, or a value with a letter, decides"
};

struct InferredType {
    std::string m_TypeWord;
    std::string m_AnySample; // the name of one
    bool m_HasLayout = false;
    Layout m_Layout; // of what stands behind the word of the type
    std::vector<InferredMark> m_Marks;
    std::vector<InferenceProblem> m_Problems;
    int m_TextCount = 0;
    int m_BinaryCount = 0;
    int m_TwinCount = 0; // binary samples whose content is that of a text sample
};

struct Inference {
    std::vector<InferredType> m_Types;        // by their words
    std::vector<InferenceProblem> m_Problems; // of samples whose type cannot be told
};

// A layout to begin with: what it says without a doubt stays, and a sample that contradicts it is a problem of the
// type.
struct LayoutToContinue {
    const Layout& m_Layout;
    std::string m_Name; // of its file, for messages
};

// Makes a layout of each type that samples show. Runs of fields that are one of `blocks` use it. Neither the order of
// the samples nor their names matter, but that messages name one of several files that would do. `known`, if there is
// one, is continued with the samples of its type.
Inference InferLayouts(std::span<const Sample> samples, const LayoutBlocks& blocks,
                       const LayoutToContinue* known = nullptr);

} // namespace Corvid

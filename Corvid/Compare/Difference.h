#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Corvid/Values/ValueTree.h"

namespace Corvid {

enum class Change { Changed, Added, Removed, Moved };

// "changed" and the like.
std::string_view WordOf(Change change);

// A value of one of the two trees; null: there is none.
struct ComparedValue {
    const ValueTree* m_Tree = nullptr;
    ValueIndex m_Node = 0;
};

// What is told of a list as a whole: `m_Count` of its `m_Of` elements changed, or were added or removed.
struct ListSummary {
    // The largest distance of numbers under one label.
    struct Largest {
        std::string m_Label; // within the element; empty where the element is the number itself
        double m_Distance = 0;
        bool m_IsInteger = false;
        std::string m_Element; // the path of the element
    };

    std::uint64_t m_Count = 0;
    std::uint64_t m_Of = 0;
    std::vector<Largest> m_Largest; // by label, in the order of the file
    std::string m_FirstElement;     // the path of the first one
};

// One line of a comparison. Valid while it is told.
struct Difference {
    Change m_Change = Change::Changed;
    std::string_view m_Field; // path; of what moved, its path before
    ComparedValue m_From;
    ComparedValue m_To;
    std::u16string_view m_Name; // of an element that was added or removed
    std::string_view m_MovedTo; // its path now
    const ListSummary* m_Summary = nullptr;
};

class DifferenceSink {
public:
    virtual ~DifferenceSink() = default;
    virtual void Take(const Difference& difference) = 0;

    // Whoever needs no further difference says so.
    virtual bool IsDone() const { return false; }
};

} // namespace Corvid

#include <gtest/gtest.h>

#include <climits>

#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/DataStructures/DynamicVector.h"
#include "Engine/DataStructures/FixedArray.h"
#include "Engine/DataStructures/FixedVector.h"
#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

// Counts the objects that are alive.
struct Counted {
    Counted() { ++s_Alive; }
    ~Counted() { --s_Alive; }
    int m_Value = 7;
    static inline int s_Alive = 0;
};

// Reads and writes outside reach a spare element that is new each time, and are reported once each.
template <class Container> void ExpectGuarded(Container& container, const char* upperCheck) {
    ReportLog reports;
    const Container& readable = container;
    const int size = readable.GetSize();
    for (const int index : {-1, INT_MIN}) {
        container[index].m_Value = 1;
        EXPECT_EQ(readable[index].m_Value, 7);
    }
    EXPECT_EQ(reports.Count("Assertion failed: i >= 0 ("), 4);
    for (const int index : {size, INT_MAX}) {
        container[index].m_Value = 1;
        EXPECT_EQ(readable[index].m_Value, 7);
    }
    EXPECT_EQ(reports.Count(upperCheck), 4);
    EXPECT_EQ(reports.GetTexts().size(), 8u);
    for (int i = 0; i < size; ++i)
        EXPECT_EQ(readable[i].m_Value, 7);
    EXPECT_EQ(reports.GetTexts().size(), 8u);
}

TEST(ContainersTest, IndicesAreChecked) {
    FixedArray<Counted, 3> fixedArray;
    ExpectGuarded(fixedArray, "Assertion failed: i < MAX_SIZE (");
    FixedVector<Counted, 3> fixedVector;
    fixedVector.Append();
    ExpectGuarded(fixedVector, "Assertion failed: i < m_CurrentSize (");
    DynamicArray<Counted> dynamicArray;
    ExpectGuarded(dynamicArray, "Assertion failed: i < size (");
    dynamicArray.SetSize(2);
    ExpectGuarded(dynamicArray, "Assertion failed: i < size (");
    DynamicVector<Counted> dynamicVector;
    ExpectGuarded(dynamicVector, "Assertion failed: i < m_CurrentSize (");
    dynamicVector.SetCapacity(2);
    dynamicVector.Append();
    ExpectGuarded(dynamicVector, "Assertion failed: i < m_CurrentSize (");
}

TEST(ContainersTest, AppendingStopsAtTheCapacity) {
    ReportLog reports;
    FixedVector<Counted, 2> fixedVector;
    DynamicVector<Counted> dynamicVector;
    dynamicVector.SetCapacity(2);
    for (int i = 0; i < 2; ++i) {
        fixedVector.Append().m_Value = i;
        dynamicVector.Append().m_Value = i;
    }
    EXPECT_EQ(reports.Take(), "");
    fixedVector.Append().m_Value = 9;
    EXPECT_EQ(reports.Count("Assertion failed: m_CurrentSize < MAX_SIZE ("), 1);
    dynamicVector.Append().m_Value = 9;
    EXPECT_EQ(reports.GetTexts().size(), 2u);
    EXPECT_EQ(fixedVector.GetSize() + dynamicVector.GetSize(), 4);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(fixedVector[i].m_Value, i);
        EXPECT_EQ(dynamicVector[i].m_Value, i);
    }
}

TEST(ContainersTest, ElementsGoWithTheirContainer) {
    const int alive = Counted::s_Alive;
    {
        ReportLog reports;
        DynamicArray<Counted> array;
        array.SetSize(5);
        array.SetSize(3); // replaces them all
        EXPECT_EQ(Counted::s_Alive, alive + 3);
        array.SetSize(-1);
        EXPECT_EQ(array.GetSize(), 0);
        EXPECT_EQ(Counted::s_Alive, alive);
        EXPECT_EQ(reports.Take(), "");

        DynamicVector<Counted> vector;
        vector.SetCapacity(4);
        vector.Append();
        vector.Append();
        vector.Truncate(1);
        EXPECT_EQ(Counted::s_Alive, alive + 1);
        vector.SetCapacity(2);
        EXPECT_EQ(vector.GetSize(), 0);
        EXPECT_EQ(vector.GetCapacity(), 2);
        vector.Append();
        vector.SetCapacity(-1);
        EXPECT_EQ(reports.Count("Assertion failed: newMaxSize >= 0 ("), 1);
        EXPECT_EQ(vector.GetSize() + vector.GetCapacity(), 0);
        EXPECT_EQ(Counted::s_Alive, alive);

        FixedVector<Counted, 3> fixedVector;
        fixedVector.Append();
        array.SetSize(2);
    }
    EXPECT_EQ(Counted::s_Alive, alive);
}

} // namespace
} // namespace Corvid

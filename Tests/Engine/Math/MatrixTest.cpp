#include "Engine/Math/Matrix.h"

#include <gtest/gtest.h>

#include <climits>

#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

template <class Matrix> void ExpectGuarded(int size, const std::string& rowCheck, const std::string& columnCheck) {
    ReportLog reports;
    Matrix matrix;
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            EXPECT_EQ(matrix.At(row, column), 0.0f);
            matrix.At(row, column) = static_cast<float>(size * row + column);
        }
    }
    EXPECT_EQ(matrix.GetRow(1).x, static_cast<float>(size));
    EXPECT_EQ(matrix.GetRow(size - 1).z, static_cast<float>(size * size - size + 2));
    EXPECT_EQ(reports.Take(), "");
    for (const int outside : {-1, size, INT_MIN, INT_MAX}) {
        matrix.At(outside, 0);
        matrix.At(0, outside);
    }
    EXPECT_EQ(reports.Count("Assertion failed: " + rowCheck + " (Engine/Math/Matrix, line "), 4);
    EXPECT_EQ(reports.Count("Assertion failed: " + columnCheck + " (Engine/Math/Matrix, line "), 4);
    EXPECT_EQ(reports.GetTexts().size(), 8u);
}

TEST(MatrixTest, ElementsStandRowByRowWithinBounds) {
    ExpectGuarded<Matrix33>(3, "(0 <= row) && (row < 3)", "(0 <= column) && (column < 3)");
    ExpectGuarded<Matrix44>(4, "(0 <= row) && (row < 4)", "(0 <= column) && (column < 4)");
}

TEST(MatrixTest, IdentityHasTheAxesAsRows) {
    EXPECT_EQ(Matrix33::Identity(), Matrix33({1, 0, 0}, {0, 1, 0}, {0, 0, 1}));
    EXPECT_EQ(Matrix33(), Matrix33({0, 0, 0}, {0, 0, 0}, {0, 0, 0}));
}

} // namespace
} // namespace Corvid

#include "Engine/Render/Mesh/CachedVertexIndices.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace Corvid {
namespace {

using List = std::vector<std::int32_t>;
using Lists = std::array<List, 6>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
const float kOtherNan = std::bit_cast<float>(0x7FC12345);
constexpr Vector3 kAxes[] = {{0, 1, 0}, {0, -1, 0}, {-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, -1}};
constexpr Vector3 kUp = kAxes[0];
constexpr Vector3 kDown = kAxes[1];

MeshVertex VertexAt(Vector3 position, Vector3 normal) {
    MeshVertex vertex{};
    vertex.m_Position = position;
    vertex.m_Normal = normal;
    return vertex;
}

Lists Compute(const std::vector<MeshVertex>& vertices, float radius) {
    DynamicArray<MeshVertex> array;
    array.SetSize(static_cast<int>(vertices.size()));
    std::copy(vertices.begin(), vertices.end(), array.begin());
    CachedVertexIndices computed;
    ComputeCachedVertexIndices(array, radius, computed);
    Lists lists;
    for (int d = 0; d < 6; ++d)
        lists[static_cast<std::size_t>(d)].assign(computed[d].begin(), computed[d].end());
    return lists;
}

TEST(CachedVertexIndicesTest, NormalFacesDirectionsWithin67AndAHalfDegrees) {
    struct Case {
        float along; // the component of the normal along an axis
        float aside; // one of the two others
        bool faces;
    };
    const Case kCases[] = {
        {1.0f, 0.0f, true},
        {std::bit_cast<float>(0x3EC3EF15), 0.9238795f, true}, // the float nearest the cosine of the limit
        {std::bit_cast<float>(0x3EC3EF14), 0.0f, true},
        {std::bit_cast<float>(0x3EC3EF13), 0.0f, false},
        {2.0f, 0.0f, true}, // beyond 1 as if it were 1
        {std::numeric_limits<float>::max(), 0.0f, true},
        {0.0f, 0.0f, false},
        {-1.0f, 0.0f, false},
        {kInfinity, 0.0f, false},
        {kNan, 0.0f, false},
        {1.0f, kInfinity, false},
        {1.0f, -kInfinity, false},
        {1.0f, kNan, false},
    };
    for (std::size_t d = 0; d < 6; ++d) {
        for (const Case& row : kCases) {
            for (float Vector3::*other : {&Vector3::x, &Vector3::y, &Vector3::z}) {
                if (kAxes[d].*other != 0.0f)
                    continue;
                Vector3 normal{};
                for (float Vector3::*c : {&Vector3::x, &Vector3::y, &Vector3::z})
                    normal.*c = kAxes[d].*c == 0.0f ? 0.0f : kAxes[d].*c * row.along;
                normal.*other = row.aside;
                EXPECT_EQ(Compute({VertexAt({}, normal)}, 1.0f)[d], row.faces ? List{0} : List{})
                    << "direction " << d << ", " << row.along << ", " << row.aside;
            }
        }
    }
}

TEST(CachedVertexIndicesTest, KeyIsDistanceFromRadiusAlongZOrX) {
    for (std::size_t d = 0; d < 6; ++d) {
        const Vector3 normal = kAxes[d];
        const Lists lists =
            Compute({VertexAt({3, 9, 5}, normal), VertexAt({6, 8, 1}, normal), VertexAt({0, 7, 3}, normal)}, 0.0f);
        for (std::size_t other = 0; other < 6; ++other)
            EXPECT_EQ(lists[other], other != d ? List{} : d < 4 ? (List{1, 2, 0}) : (List{2, 0, 1})) << d << other;
    }
}

// Vertices that face up unless they are said to face down; what the list for UP holds.
TEST(CachedVertexIndicesTest, ListsAreSortedAndThinned) {
    struct Case {
        const char* name;
        float radius;
        std::vector<Vector3> positions;
        List expected;
        bool isFirstDown = false;
    };
    const float kJustBelow2 = std::nextafter(2.0f, 0.0f);
    const float kTenTimesOnePercent = std::nextafter(0.1f, 0.0f); // 10 * 0.01f, unlike 10 / 100
    const Case kCases[] = {
        {"EitherSideOfRadius", 10, {{0, 0, 0}, {0, 0, 10}, {0, 0, 5}, {0, 0, -10}, {0, 0, 12}}, {1, 4, 2, 0, 3}},
        {"EqualKeysByIndex", 10, {{0, 0, 9}, {1, 0, 11}, {2, 0, 9}, {3, 0, 11}, {4, 0, 10}}, {4, 0, 1, 2, 3}},
        {"InfiniteThenNanKeysLast",
         1,
         {{0, 0, kOtherNan}, {0, 0, kInfinity}, {0, 0, 1}, {0, 0, -kInfinity}, {0, 0, -kNan}, {0, 0, 0}},
         {2, 5, 1, 3, 0, 4}},
        {"InfiniteRadiusKeepsVertex0Alone", kInfinity, {{0, 0, 0}, {5, 0, 0}, {0, 0, 7}}, {0}},
        {"NanRadiusKeepsAllByIndex", kNan, {{0, 0, 3}, {0, 0, 2}, {0, 0, 2}}, {0, 1, 2}},
        {"ZeroRadiusThinsNothing", 0, {{0, 0, 1}, {0, 0, 0}, {0, 0, 0}}, {1, 2, 0}},
        {"NegativeRadiusThinsNothing", -100, {{0, 0, 1}, {0, 0, 0}, {0, 0, 0}}, {1, 2, 0}},
        {"SamePlaceLeavesFirst", 1, {{0, 0, 0}, {4, 0, 1}, {4, 0, 1}, {0, 3, 1}}, {1, 3, 0}},
        {"StrictlyLess", 100, {{0, 0, 0}, {1, 0, 0}, {kJustBelow2, 0, 0}, {2, 0, 0}}, {0, 1, 3}},
        {"ToleranceIsAProduct", 10, {{0, 0, 0}, {kTenTimesOnePercent, 0, 0}, {0.05f, 0, 0}}, {0, 1}},
        {"DistanceInAllThreeAxes", 100, {{0, 0, 0}, {0.57f, 0.57f, 0.57f}, {0.58f, -0.58f, -0.58f}}, {0, 2}},
        {"DistanceFromLastKept", 100, {{0, 0, 0}, {.6f, 0, 0}, {1.2f, 0, 0}, {1.8f, 0, 0}, {2.4f, 0, 0}}, {0, 2, 4}},
        {"Vertex0CountsBeforeItsTurn", 100, {{0, 0, 0}, {0, 0, 0.5f}}, {0}},
        {"Vertex0IsThinnedLikeOthers", 100, {{0, 0, 4.5f}, {0, 0, 6}, {.5f, 0, 4.9f}}, {1, 2}},
        {"Vertex0CountsWhereItFacesAway", 100, {{0, 0, 0}, {.5f, 0, 0}, {1.2f, 0, 0}, {0, 0, .9f}}, {2}, true},
        {"HugeDistancesOverflowAndStay", 1e30f, {{0, 0, 0}, {1e28f, 0, 0}, {1e25f, 0, 0}}, {0, 1, 2}},
        {"NoVertices", 1, {}, {}},
    };
    for (const Case& row : kCases) {
        std::vector<MeshVertex> vertices;
        for (const Vector3& position : row.positions)
            vertices.push_back(VertexAt(position, row.isFirstDown && vertices.empty() ? kDown : kUp));
        EXPECT_EQ(Compute(vertices, row.radius)[0], row.expected) << row.name;
    }
}

// The list of one direction, step by step, however long it takes.
List ComputeStepByStep(const std::vector<MeshVertex>& vertices, float radius, std::size_t direction) {
    const Vector3 axis = kAxes[direction];
    List list;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const Vector3 normal = vertices[i].m_Normal;
        float cosine = normal.x * axis.x + normal.y * axis.y + normal.z * axis.z;
        cosine = cosine < -1.0f ? -1.0f : cosine > 1.0f ? 1.0f : cosine;
        const bool isFinite = std::isfinite(normal.x) && std::isfinite(normal.y) && std::isfinite(normal.z);
        if (isFinite && static_cast<float>(std::acos(static_cast<double>(cosine))) <= 1.1780972f)
            list.push_back(static_cast<std::int32_t>(i));
    }
    const auto position = [&](std::size_t place) { return vertices[static_cast<std::size_t>(list[place])].m_Position; };
    const auto key = [&](std::size_t place) {
        return std::fabs(radius - (direction < 4 ? position(place).z : position(place).x));
    };
    const auto isBefore = [](float a, float b) { return a < b || (std::isnan(b) && !std::isnan(a)); };
    for (std::size_t end = 1; end < list.size(); ++end) {
        for (std::size_t i = end; i > 0 && isBefore(key(i), key(i - 1)); --i)
            std::swap(list[i], list[i - 1]);
    }
    std::int32_t previous = 0;
    for (std::size_t i = 0; i < list.size();) {
        const Vector3 from = vertices[static_cast<std::size_t>(previous)].m_Position;
        const float x = from.x - position(i).x, y = from.y - position(i).y, z = from.z - position(i).z;
        if (list[i] != previous && std::sqrt(x * x + y * y + z * z) < radius * 0.01f)
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
        else
            previous = list[i++];
    }
    return list;
}

TEST(CachedVertexIndicesTest, AgreesWithItsStepsOnTiesAndSpecialValues) {
    std::mt19937 random(67);
    const auto pick = [&](std::initializer_list<float> values) { return values.begin()[random() % values.size()]; };
    const auto coordinate = [&] {
        return random() % 32 != 0 ? static_cast<float>(random() % 16) * 0.25f - 2.0f
                                  : pick({kInfinity, -kInfinity, kNan, kOtherNan, -0.0f, 1e-40f, -3e38f, 0.999f});
    };
    const auto component = [&] {
        const float limit = std::bit_cast<float>(0x3EC3EF10 + static_cast<std::uint32_t>(random() % 8));
        return random() % 64 != 0 ? pick({0.0f, -0.0f, 0.7f, -1.0f, limit, -limit, 1.5f})
                                  : pick({kInfinity, -kInfinity, kNan, -3e38f});
    };
    for (const std::size_t size : {1u, 2u, 40u, 511u, 512u, 513u, 2000u}) {
        std::vector<MeshVertex> vertices(size);
        for (MeshVertex& vertex : vertices)
            vertex = VertexAt({coordinate(), coordinate(), coordinate()}, {component(), component(), component()});
        for (const float radius : {-1.0f, 0.0f, 2.0f, 60.0f, 1e-40f, 3e38f, kInfinity, kNan}) {
            const Lists lists = Compute(vertices, radius);
            for (std::size_t d = 0; d < 6; ++d)
                ASSERT_EQ(lists[d], ComputeStepByStep(vertices, radius, d)) << size << ", " << radius << ", " << d;
        }
    }
}

} // namespace
} // namespace Corvid

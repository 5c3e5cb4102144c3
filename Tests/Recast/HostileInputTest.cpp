#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <regex>
#include <string>
#include <vector>

#ifdef __linux__
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "Tests/Engine/File/ChildProcess.h"
#endif

#include "Engine/Archive/Text/TextFileArchive.h"
#include "Engine/Render/Mesh/MeshData.h"
#include "Engine/String/Unicode.h"
#include "Tests/Recast/ProgramFixture.h"

namespace Corvid {
namespace {

constexpr std::size_t kMebibyte = std::size_t(1) << 20;
constexpr auto kPatience = std::chrono::seconds(10);

class HostileInputTest : public ProgramFixture {
protected:
    // Converts `source` to "b" within the bounds that hold for any input; returns what was reported.
    std::string ConvertWithinBounds(const std::u16string& type, const std::string& source, const char16_t* format) {
        m_Folder.Put("a", source);
        const auto start = std::chrono::steady_clock::now();
        std::string output = ConvertRaw({type, u"a", u"b", format});
        EXPECT_LT(std::chrono::steady_clock::now() - start, kPatience);
        EXPECT_LE(output.size(), std::min(kMebibyte + 512 * source.size(), 32 * kMebibyte));
        EXPECT_LE(m_Folder.Get("b").size(), 4 * kMebibyte + 256 * source.size());
        return output;
    }

    // Without the work on line numbers that Run() does, which is much for long outputs.
    static std::string ConvertRaw(const std::vector<std::u16string>& words) {
        struct StringSink final : TextSink {
            void WriteText(std::string_view utf8) override { m_Text += utf8; }
            std::string m_Text;
        } sink;
        std::vector<const char16_t*> arguments = {u"recast"};
        for (const std::u16string& word : words)
            arguments.push_back(word.c_str());
        EXPECT_EQ(RunProgram(arguments, sink), 0);
        return sink.m_Text;
    }
};

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size())
        ++count;
    return count;
}

// A binary mesh of nothing but vertices, or what there is of it.
std::string MeshBytes(float radius, std::int32_t claimed, const std::vector<MeshVertex>& vertices) {
    std::string bytes = "BIN\n";
    const auto append = [&bytes](const auto& value) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    append(std::int32_t(0));
    append(false);
    append(radius);
    append(Vector3{1, 1, 1});
    append(Vector3{-1, -1, -1});
    append(std::int32_t(0));
    append(std::int32_t(0));
    append(claimed);
    for (const MeshVertex& vertex : vertices) {
        append(vertex.m_Position);
        append(vertex.m_Normal);
        append(vertex.m_Tangent);
        append(Color{});
        append(vertex.m_U0);
        append(vertex.m_V0);
        append(vertex.m_U1);
        append(vertex.m_V1);
    }
    return bytes;
}

TEST_F(HostileInputTest, AnyCountMayBeWrong) {
    const std::regex countLine("\n\t*([A-Za-z]*[Nn]um[A-Z]\\S*|brushCount) ([0-9]+)\r\n");
    for (const ExampleKind& kind : kExampleKinds) {
        const std::string text = ReadExample(kind.m_Example);
        for (std::sregex_iterator count(text.begin(), text.end(), countLine), end; count != end; ++count) {
            for (const char* value :
                 {"0", "-1", "-2147483648", "2147483647", "1000000", "4096", "4294967295", "99", "many", "\"1\"", ""}) {
                SCOPED_TRACE((*count)[1].str() + " " + value);
                std::string source = text;
                source.replace(static_cast<std::size_t>(count->position(2)), (*count)[2].str().size(), value);
                const std::string reports = ConvertWithinBounds(kind.m_Type, source, u"bin");
                const std::string claim = "The count '" + (*count)[1].str() + "' claims " + value + " elements";
                EXPECT_EQ(CountOf(reports, claim),
                          static_cast<std::int32_t>(std::strtoll(value, nullptr, 10)) >= 1000000 ? 1u : 0u);
                EXPECT_EQ(ConvertRaw({kind.m_Type, u"b", u"c", u"bin"}), "");
                EXPECT_TRUE(m_Folder.Get("c") == m_Folder.Get("b"));
            }
        }
    }
}

// Each count could be right, taken by itself; together they are many times the file.
TEST_F(HostileInputTest, CountsThatClaimTheSameInputAreBoundTogether) {
    struct List {
        std::string countLabel;
        std::size_t memory; // of an element
    };
    std::vector<List> lists = {{"NumMaterials", sizeof(MeshMaterial)},
                               {"NumPoints", sizeof(MeshPoint)},
                               {"NumVertices", sizeof(MeshVertex)},
                               {"NumTriangles", sizeof(MeshTriangle)}};
    for (const char* direction : {"UP", "DOWN", "LEFT", "RIGHT", "FRONT", "BACK"})
        lists.push_back({std::string("NumCachedVertexIndicesInDirection:") + direction, sizeof(std::int32_t)});
    std::string mesh = "TXT\nMeshData\n";
    for (const List& list : lists)
        mesh += list.countLabel + " 2000000000\n";
    while (mesh.size() < 2 * kMebibyte)
        mesh += "\xE4\xB8\xAD";
    const std::string reports = ConvertWithinBounds(u"mesh", mesh, u"bin");
    std::size_t memory = 0, elements = 0;
    for (const List& list : lists) {
        std::smatch cut;
        ASSERT_TRUE(std::regex_search(reports, cut, std::regex("'" + list.countLabel + "' claims.* ([0-9]+) are")));
        elements += std::stoul(cut[1]);
        memory += std::stoul(cut[1]) * list.memory;
    }
    EXPECT_LE(elements, mesh.size() + lists.size() * 4096);
    EXPECT_LE(memory, 16 * kMebibyte + 35 * mesh.size()); // the slack of each list, and the rest

    std::string effect = "TXT\nParticleSimulation\nNumAffectors 2000000000\n";
    while (effect.size() < 2 * kMebibyte)
        effect += "AffectorType \"Drag\"\nAffectorContents\nnumAttachedEmitters 4096\n";
    const std::string flood = ConvertWithinBounds(u"particle", effect, u"txt");
    const std::size_t lastLine = flood.rfind('\n', flood.size() - 2) + 1;
    EXPECT_LE(std::stoul(flood.substr(lastLine)), 4 * effect.size()); // so many reports left out, none of them free
}

TEST_F(HostileInputTest, FloodOfReportsEndsInOneLineAndKeepsTheOutcome) {
    for (const std::int32_t count : {10, 4000}) {
        const std::string source = MeshBytes(1, count, {});
        m_Folder.Put("a", source);
        const std::string output = ConvertRaw({u"mesh", u"a", u"no/b"});
        const bool isFlood = count > 10;
        EXPECT_LE(output.size(), kMebibyte + 512 * source.size());
        EXPECT_EQ(CountOf(output, " further reports are left out.\n"), isFlood ? 1u : 0u);
        EXPECT_EQ(output.ends_with(" further reports are left out.\n"), isFlood);
        EXPECT_EQ(CountOf(output, "Failed to Open File: 'no/b'\n"), 1u);
    }
}

TEST_F(HostileInputTest, MissesCostTheSameWhateverTheLineIs) {
    struct Case {
        const char* name;
        std::string file;
    };
    std::string wideLine = "TXT\n";
    for (int i = 0; i < 1000; ++i)
        wideLine += "\xE4\xB8\xAD";
    const Case kCases[] = {
        {"EndOfText", "TXT\n"},
        {"EndOfBinary", "BIN\n"},
        {"HalfAValue", "BIN\n\1\2"},
        {"WideLine", wideLine},
        {"BlankLine", "TXT\n" + std::string(1000, ' ') + "x\n"},
        {"LongLine", "TXT\n" + std::string(100000, 'x')},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.name);
        FileArchiveSystem archives;
        auto archive = archives.OpenForReading(File::ReadFromMemory(u"memory", row.file));
        ASSERT_NE(archive, nullptr);
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 1000000; ++i) {
            std::int32_t number = 7;
            char16_t text[64] = u"kept";
            archive->ReadInt(u"Index", number);
            archive->ReadString(u"Name", text, 64);
            if (number != 7 || std::u16string_view(text) != u"kept")
                FAIL();
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, kPatience / 2);
        archives.Release(std::move(archive));
    }
}

TEST_F(HostileInputTest, LargeMeshesOfAnyShapeConvertInSeconds) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN(), kInfinity = std::numeric_limits<float>::infinity();
    constexpr std::int32_t kCount = 200000;
    struct Case {
        const char* name;
        float radius;
        float (*coordinate)(std::int32_t index);
        Vector3 normal;
        std::int32_t facing; // in each of the lists of up, right and front
    };
    const Vector3 all = {0.57f, 0.57f, 0.57f};
    const Case kCases[] = {
        {"Equal", 1, [](std::int32_t) { return 0.5f; }, all, 1},
        {"EqualWithoutTolerance", 0, [](std::int32_t) { return 0.5f; }, all, kCount},
        {"Rising", 1, [](std::int32_t i) { return static_cast<float>(i); }, all, kCount},
        {"Falling", 1, [](std::int32_t i) { return -static_cast<float>(i); }, all, kCount},
        {"NanPositions", 1, [](std::int32_t) { return kNan; }, all, kCount},
        {"SomeNan", 1, [](std::int32_t i) { return i % 3 != 0 ? kNan : static_cast<float>(i); }, all, kCount},
        {"InfinitePositions", 1, [](std::int32_t i) { return i % 2 != 0 ? kInfinity : -kInfinity; }, all, kCount},
        {"NanRadius", kNan, [](std::int32_t i) { return static_cast<float>(i % 7); }, all, kCount},
        {"InfiniteRadius", kInfinity, [](std::int32_t i) { return static_cast<float>(i); }, all, 1},
        {"NanNormals", 1, [](std::int32_t i) { return static_cast<float>(i); }, {1, kNan, 1}, 0},
        {"InfiniteNormals", 1, [](std::int32_t i) { return static_cast<float>(i); }, {1, 1, kInfinity}, 0},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.name);
        std::vector<MeshVertex> vertices(kCount, MeshVertex{});
        for (std::int32_t i = 0; i < kCount; ++i) {
            const float coordinate = row.coordinate(i);
            vertices[static_cast<std::size_t>(i)].m_Position = {coordinate, coordinate, coordinate};
            vertices[static_cast<std::size_t>(i)].m_Normal = row.normal;
        }
        const std::string source = MeshBytes(row.radius, kCount, vertices);
        ConvertWithinBounds(u"mesh", source + std::string(7 * 4, '\0'), u"bin");
        const std::size_t lists = 3 * static_cast<std::size_t>(row.facing);
        EXPECT_EQ(m_Folder.Get("b").size(), source.size() + 4 * (7 + lists));
        EXPECT_TRUE(m_Folder.Get("b").starts_with(source));
    }
}

TEST_F(HostileInputTest, SourcesWithoutEndAreBounded) {
#ifdef _WIN32
    GTEST_SKIP() << "needs a device of endless bytes";
#endif
    for (const ExampleKind& kind : kExampleKinds)
        EXPECT_EQ(ConvertRaw({kind.m_Type, u"/dev/zero", u"b"}),
                  "Could not detect if Archive File is Binary or Text: /dev/zero\n");
}

#ifdef __linux__

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSanitizer = true;
#elif defined(__has_feature)
constexpr bool kHasSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kHasSanitizer = false;
#endif

// Bytes that come one after the other through a FIFO "fifo", with pauses.
ChildProcess SlowWriter(const std::vector<std::string>& pieces) {
    mkfifo("fifo", 0600);
    return ChildProcess([&] {
        const int writer = open("fifo", O_WRONLY);
        std::signal(SIGPIPE, SIG_IGN);
        for (const std::string& piece : pieces) {
            usleep(20000);
            for (std::size_t done = 0; done < piece.size();) {
                const ssize_t count = write(writer, piece.data() + done, piece.size() - done);
                if (count < 0)
                    return 0; // given up by the reader
                done += static_cast<std::size_t>(count);
            }
        }
        return 0;
    });
}

TEST_F(HostileInputTest, PipesAreConvertedOnceTheyEnd) {
    for (const ExampleKind& kind : kExampleKinds) {
        const std::string text = ReadExample(kind.m_Example);
        m_Folder.Put("a", text);
        EXPECT_EQ(ConvertRaw({kind.m_Type, u"a", u"b"}), "");
        const ChildProcess writer = SlowWriter({text.substr(0, 2), text.substr(2, 100), text.substr(102)});
        EXPECT_EQ(ConvertRaw({kind.m_Type, u"fifo", u"c"}), "");
        EXPECT_TRUE(m_Folder.Get("c") == m_Folder.Get("b"));
    }
    const ChildProcess writer = SlowWriter({"BI", "N\n1", "23", std::string(kMebibyte, 'x')});
    EXPECT_EQ(ConvertRaw({u"saveGame", u"fifo", u"c"}), "");
    EXPECT_TRUE(m_Folder.Get("c") == "BIN\n(23" + std::string(kMebibyte, 'x'));
}

TEST_F(HostileInputTest, PipesThatOutgrowTheBoundAreNotConverted) {
    for (const std::u16string type : {u"mesh", u"saveGame"}) {
        m_Folder.Put("b", "kept");
        const ChildProcess writer = SlowWriter({"BIN\n", std::string(257 * kMebibyte, '\0')});
        EXPECT_EQ(ConvertRaw({type, u"fifo", u"b"}),
                  "The source 'fifo' does not end: reading stops after 268435456 bytes.\n");
        EXPECT_EQ(m_Folder.Get("b"), "kept");
        writer.Kill();
    }
}

// Whatever stands in memory beforehand, the same input gives the same bytes.
TEST_F(HostileInputTest, NothingUnsetReachesAFile) {
    std::vector<std::pair<std::u16string, std::string>> sources = {{u"mesh", MeshBytes(1, 4000, {})}};
    for (const ExampleKind& kind : kExampleKinds) {
        const std::string text = ReadExample(kind.m_Example);
        m_Folder.Put("a", text);
        ConvertRaw({kind.m_Type, u"a", u"b"});
        for (const std::string& whole : {text, m_Folder.Get("b")}) {
            for (std::size_t part = 1; part <= 8; ++part)
                sources.emplace_back(kind.m_Type, whole.substr(0, whole.size() * part / 8));
        }
    }
    for (const auto& [type, source] : sources) {
        m_Folder.Put("a", source);
        std::string results[2];
        for (std::string& result : results) {
            mallopt(M_PERTURB, &result == results ? 0x01 : 0x5A);
            for (const char16_t* format : {u"bin", u"txt"}) {
                m_Folder.Put("b", "");
                result += ConvertRaw({type, u"a", u"b", format});
                result += m_Folder.Get("b");
            }
        }
        mallopt(M_PERTURB, 0);
        EXPECT_TRUE(results[0] == results[1]) << ToUtf8(type) << ' ' << source.size();
    }
}

// At some point of a conversion there is no memory left: the old destination stays, or the new one is whole.
TEST_F(HostileInputTest, OutOfMemoryKeepsTheDestination) {
    if (kHasSanitizer)
        GTEST_SKIP() << "the sanitizer takes more memory than the limits allow";
    std::vector<MeshVertex> vertices(100000, MeshVertex{});
    for (std::size_t i = 0; i < vertices.size(); ++i)
        vertices[i] = {{static_cast<float>(i), 0, 0}, {1, 0, 0}, {}, 0, 0, 0, 0};
    m_Folder.Put("a", MeshBytes(1, 100000, vertices) + std::string(7 * 4, '\0'));
    EXPECT_EQ(ConvertRaw({u"mesh", u"a", u"whole"}), "");
    int failures = 0, successes = 0;
    for (rlim_t mebibytes = 4; mebibytes <= 40; ++mebibytes) {
        m_Folder.Put("b", "old");
        ChildProcess child([mebibytes] { // a process of its own: this one may have kept freed memory
            const rlimit limit = {mebibytes * kMebibyte, mebibytes * kMebibyte};
            if (std::freopen("output", "wb", stdout) != nullptr && setrlimit(RLIMIT_AS, &limit) == 0)
                execl(CORVID_RECAST, CORVID_RECAST, "mesh", "a", "b", static_cast<char*>(nullptr));
            return 1;
        });
        ASSERT_EQ(child.Wait(), 0) << mebibytes;
        const bool hasFailed = m_Folder.Get("output").find("not enough memory") != std::string::npos;
        EXPECT_TRUE(m_Folder.Get("b") == (hasFailed ? "old" : m_Folder.Get("whole"))) << mebibytes;
        ++(hasFailed ? failures : successes);
    }
    EXPECT_GT(failures, 0);
    EXPECT_GT(successes, 0);
    EXPECT_EQ(m_Folder.List(), (std::set<std::string>{"a", "b", "output", "whole"}));
}

#endif

} // namespace
} // namespace Corvid

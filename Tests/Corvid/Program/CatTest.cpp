#include "Tests/Corvid/Program/ProgramFixture.h"

#include "Corvid/Json/ValueJson.h"

namespace Corvid {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using CatTest = ProgramFixture;

TEST_F(CatTest, PrintsTheSameOfBothEncodings) {
    Put("a.mesh", Example("Mesh/cube.mesh"));
    Put("b.mesh", Example("Mesh/cube-binary.mesh"));
    const Run text = Corvid({"cat", "a.mesh"});
    EXPECT_EQ(text.m_Status, kExitDone);
    EXPECT_THAT(text.m_Out, StartsWith("TXT\nMeshData\n\tmaxDiffuseMipLevel 0\n"));
    EXPECT_EQ(text.m_Out.find('\r'), std::string::npos);
    EXPECT_EQ(Corvid({"cat", "b.mesh"}).m_Out, text.m_Out);
    EXPECT_EQ(Corvid({"cat", "--json", "b.mesh"}).m_Out, Corvid({"cat", "--json", "a.mesh"}).m_Out);
}

TEST_F(CatTest, ErrorsLeaveNothingUnlessLenient) {
    std::string text = Example("Entity/HullFragments.entity");
    text.replace(text.find("averageLifetime"), 3, "xyz");
    Put("a.entity", text);
    Run run = Corvid({"cat", "a.entity"});
    EXPECT_EQ(run.m_Status, kExitFindings);
    EXPECT_EQ(run.m_Out, "");
    EXPECT_THAT(run.m_Err, HasSubstr("[missing-field]"));
    run = Corvid({"cat", "--lenient", "a.entity"});
    EXPECT_EQ(run.m_Status, kExitDone);
    EXPECT_THAT(run.m_Out, StartsWith("# a.entity:3:1: error: "));
    EXPECT_THAT(run.m_Out, HasSubstr("\nTXT\nentityType \"Debris\"\n"));
    Put("blob/a.entity", text); // as git does with the version before
    EXPECT_EQ(Corvid({"cat", "--lenient", "blob/a.entity"}).m_Out, run.m_Out);
    run = Corvid({"cat", "--lenient", "gone"});
    EXPECT_EQ(run.m_Status, kExitDone);
    EXPECT_THAT(run.m_Out, StartsWith("# gone: error: "));
}

TEST_F(CatTest, JsonHoldsExactNumbers) {
    ValueTree tree;
    tree.BeginRecord("R");
    tree.AddFloat("tenth", 0.1f);
    tree.AddFloat("tiny", 1.17549435e-38f);
    tree.AddFloat("zero", -0.0f);
    tree.AddFloat("nan", -std::numeric_limits<float>::quiet_NaN());
    tree.AddFloat("inf", std::numeric_limits<float>::infinity());
    tree.AddInt64("big", std::numeric_limits<std::int64_t>::min());
    const float color[] = {1.0f, 0.5f, 0.0f, 1.0f};
    tree.AddFloats(ValueKind::Color, "color", color);
    tree.AddString("text", u"a\"\xD800");
    tree.AddInt("NumEmpty", 0);
    const std::string_view labels[] = {"Type", "Contents"};
    tree.BeginList(labels);
    tree.EndList();
    const std::string_view outer[] = {"inner"}, inner[] = {"a", "b"};
    tree.AddInt("NumOuter", 1);
    tree.BeginList(outer);
    tree.AddInt("inner", 1);
    tree.BeginList(inner);
    tree.AddInt("a", 1);
    tree.AddInt("b", 2);
    tree.EndList();
    tree.EndList();
    tree.EndRecord();
    tree.Finish();
    EXPECT_EQ(JsonOf(tree, JsonLook::OneLine),
              R"({"R":{"tenth":0.1,"tiny":1.1754944e-38,"zero":-0.0,"nan":"-nan","inf":"inf",)"
              R"("big":-9223372036854775808,"color":"#ffff8000","text":"a\")"
              "\xEF\xBF\xBD"
              R"(","Type":[],"Contents":[],"inner":[{"a":[1],"b":[2]}]}})");
}

} // namespace Corvid

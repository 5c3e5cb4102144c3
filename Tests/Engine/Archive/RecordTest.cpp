#include "Engine/Archive/Record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "Engine/Archive/NullArchive.h"
#include "Tests/Engine/Archive/TextArchiveFixture.h"
#include "Tests/Support/SpelledFile.h"

namespace Corvid {

namespace {

enum class Paint { Invalid = -1, Flat, Glossy };
enum class ShapeType { Invalid = -1, Disc, Square }; // there is no class for the second

} // namespace

template <> struct EnumWords<Paint> { static constexpr EnumWord Words[] = {u"Flat", u"Glossy"}; };
template <> struct EnumWords<ShapeType> { static constexpr EnumWord Words[] = {u"Disc", u"Square"}; };

namespace {

class Part : public Record<Part> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"Weight", self.m_Weight); }
    virtual ~Part() = default;
    std::int32_t m_Weight = 1;
};

class PaintedPart final : public Record<PaintedPart, Part> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"paint", self.m_Paint); }
    Paint m_Paint = Paint::Glossy;
};

class Shape : public Archivable {
public:
    virtual ~Shape() = default;
    virtual ShapeType GetType() const = 0;
};

class Disc final : public Record<Disc, Shape> {
public:
    ShapeType GetType() const override { return ShapeType::Disc; }
    static void Fields(auto& self, auto& fields) { fields.Value(u"Radius", self.m_Radius); }
    float m_Radius = 1.0f;
};

class Slotted final : public Record<Slotted> {
public:
    static void Fields(auto& self, auto& fields) { fields.Slots(u"NumSlots", u"Slot", self.m_Slots); }
    FixedArray<Part, 2> m_Slots;
};

class Shapes final : public Record<Shapes> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.template Objects<ShapeType>(
            u"NumShapes", u"Type", u"Shape", {u"End"}, self.m_Shapes,
            [](ShapeType type) { return type == ShapeType::Disc ? std::make_unique<Disc>() : nullptr; });
        fields.Value(u"End", self.m_End);
    }
    FixedVector<std::unique_ptr<Shape>, 4> m_Shapes;
    std::int32_t m_End = 0;
};

class Model final : public Record<Model> {
public:
    static void Fields(auto& self, auto& fields) {
        fields.BeforeSave(self, [](const Model& model) { ++model.m_TimesSaved; });
        fields.Value(u"Name", self.m_Name);
        fields.Block(self.m_Hull);
        fields.Reserved(u"Unused", std::int32_t{5});
        fields.Value(u"mainPart", self.m_MainPart);
        fields.List(u"NumParts", u"Part", self.m_Parts);
        fields.List(u"NumWeights", u"Weight", self.m_Weights);
        fields.List(u"NumFlags", u"Flag", self.m_Flags);
        fields.Block(self.m_Slots);
        fields.Block(self.m_Shapes);
        fields.AfterLoad(self, [](Model& model) { ++model.m_TimesLoaded; });
    }

    FixedString<10> m_Name;
    PaintedPart m_Hull;
    Part m_MainPart;
    DynamicArray<Part> m_Parts;
    DynamicVector<std::int32_t> m_Weights;
    FixedVector<bool, 2> m_Flags;
    Slotted m_Slots;
    Shapes m_Shapes;
    int m_TimesLoaded = 0;
    mutable int m_TimesSaved = 0;
};

SpelledFile Spelled(std::int32_t reserved) {
    SpelledFile file;
    file.String("Name", "hull").Int("Weight", 2).String("paint", "Flat").Int("Unused", reserved);
    file.Begin("mainPart").Int("Weight", 3).End().Int("NumParts", 2);
    file.Begin("Part").Int("Weight", 4).End().Begin("Part").Int("Weight", 5).End();
    file.Int("NumWeights", 1).Int("Weight", 6).Int("NumFlags", 2).Bool("Flag", true).Bool("Flag", false);
    file.Int("NumSlots", 2).Begin("Slot").Int("Weight", 7).End().Begin("Slot").Int("Weight", 8).End();
    file.Int("NumShapes", 1).String("Type", "Disc").Begin("Shape").Float("Radius", 2.5f).End();
    return file.Int("End", 9);
}

using RecordTest = TextArchiveFixture;

TEST_F(RecordTest, LoadingMirrorsSaving) {
    for (const bool isText : {true, false}) {
        Model model;
        model.m_Shapes.m_Shapes.Append(); // an empty entry: left out
        Load(isText ? Spelled(9).GetText() : Spelled(9).GetBinary(), model);
        EXPECT_TRUE(model.m_TimesLoaded == 1 && model.m_TimesSaved == 0);
        EXPECT_EQ(Save(ArchiveFormat::Text, model), Spelled(5).GetText());
        EXPECT_EQ(Save(ArchiveFormat::Binary, model), Spelled(5).GetBinary());
        EXPECT_TRUE(model.m_TimesLoaded == 1 && model.m_TimesSaved == 2);
    }
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(RecordTest, MissingFieldsKeepTheirValues) {
    Model model;
    LoadText("", model);
    EXPECT_EQ(m_Reports.Count("missing Label."), 13); // a missing element or object costs nothing more
    EXPECT_EQ(m_Reports.Count("Label: Slot\n"), 2);
    TakeReports();
    EXPECT_TRUE(model.m_Hull.m_Weight == 1 && model.m_Hull.m_Paint == Paint::Glossy && model.m_TimesLoaded == 1);
}

template <class List> class Holder final : public Record<Holder<List>> {
public:
    static void Fields(auto& self, auto& fields) { fields.List(u"NumItems", u"Item", self.m_Items); }
    List m_Items;
};

TEST_F(RecordTest, CountsAreTakenAsTheyAre) {
    const std::string negative = Failed("newMaxSize >= 0", "Engine/DataStructures/DynamicVector");
    const std::string full = Failed("m_CurrentSize < MAX_SIZE", "Engine/DataStructures/FixedVector");
    const auto expect = [this](auto list, const char* lines, int size, const std::string& reports) {
        LoadText(lines, *list);
        EXPECT_EQ(TakeReports(), reports) << lines;
        EXPECT_EQ(list->m_Items.GetSize(), size) << lines;
    };
    const auto array = [] { return std::make_unique<Holder<DynamicArray<std::int32_t>>>(); };
    const auto vector = [] { return std::make_unique<Holder<DynamicVector<std::int32_t>>>(); };
    const auto fixed = [] { return std::make_unique<Holder<FixedVector<std::int32_t, 2>>>(); };
    for (const auto& [lines, count, reports] :
         std::vector<std::tuple<const char*, int, std::string>>{{"NumItems 0\n", 0, ""},
                                                                {"NumItems 2\nItem 1\nItem 2\n", 2, ""},
                                                                {"NumItems 2\nItem 1\n", 2, Missing("Item", 3, "")},
                                                                {"NumItems -2\n", -1, ""},
                                                                {"NumItems x\n", -1, Failed("result == 1")},
                                                                {"", -1, Missing("NumItems", 1, "")}}) {
        expect(array(), lines, std::max(count, 0), reports);
        expect(vector(), lines, std::max(count, 0), reports + (count < 0 ? negative : ""));
        expect(fixed(), lines, std::max(count, 0), reports);
    }
    expect(fixed(), "NumItems 3\nItem 1\nItem 2\nItem 3\n", 2, full);                  // the third is read, too
    expect(fixed(), "NumItems 3\nItem 1\nItem 2\n", 2, Missing("Item", 4, "") + full); // and in front of that
}

TEST_F(RecordTest, CountIsBoundByTheRestOfTheInput) {
    const struct {
        std::int32_t claimed, there, used;
    } kCases[] = {
        {5000, 5000, 5000}, {100000, 100000, 100000}, {4096, 0, 4096},    {4097, 0, 4096},
        {4099, 3, 4099},    {4100, 3, 4099},          {300000, 50, 4146}, {0x7FFFFFFF, 3, 4099},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.claimed);
        SpelledFile file;
        file.Int("NumItems", c.claimed);
        for (std::int32_t i = 0; i < c.there; ++i)
            file.Int("Item", i);
        Holder<DynamicArray<std::int32_t>> holder;
        Load(file.GetBinary(), holder);
        EXPECT_EQ(holder.m_Items.GetSize(), c.used);
        EXPECT_EQ(m_Reports.Count("desired read bytes"), c.used - c.there);
        const std::string cut = "The count 'NumItems' claims " + std::to_string(c.claimed) +
                                " elements, more than the rest of the input can hold: " + std::to_string(c.used) +
                                " are taken.\n";
        EXPECT_EQ(m_Reports.Count("claims"), c.used < c.claimed ? 1 : 0);
        EXPECT_EQ(m_Reports.Count(cut), c.used < c.claimed ? 1 : 0);
        TakeReports();

        Load(file.GetText(), holder); // how many a text can hold is estimated
        EXPECT_GE(holder.m_Items.GetSize(), c.used);
        EXPECT_LE(holder.m_Items.GetSize(), std::min(c.claimed, c.used + 5 * c.there));
        EXPECT_EQ(m_Reports.Count("claims"), holder.m_Items.GetSize() < c.claimed ? 1 : 0);
        TakeReports();
    }
}

class Note final : public Record<Note> {
public:
    static void Fields(auto& self, auto& fields) { fields.Value(u"Text", self.m_Text); }
    FixedString<1024> m_Text;
};

// Whatever an element takes in memory for what it takes in a file, and wherever it comes from.
TEST_F(RecordTest, ListOfEmptyElementsIsWhole) {
    constexpr int kCount = 100000;
    Holder<DynamicArray<Note>> notes;
    notes.m_Items.SetSize(kCount);
    for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
        Holder<DynamicArray<Note>> read;
        Load(Save(format, notes), read);
        EXPECT_EQ(read.m_Items.GetSize(), kCount);
    }
    class Countless final : public NullArchive {
    public:
        void ReadInt(Label, std::int32_t& value) override { value = kCount; }
    };
    Countless archive;
    Holder<DynamicArray<std::int32_t>> numbers;
    numbers.Load(archive);
    EXPECT_EQ(numbers.m_Items.GetSize(), kCount);
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(RecordTest, ContextIsIgnoredByDefault) {
    for (const std::string& file : {std::string("TXT\nPart\n\tWeight 5\n"), std::string("BIN\n\5\0\0\0", 8)}) {
        Part part;
        LoadWith(file, [&](Archive& archive) { archive.ReadLabeledObject(u"Part", part, this); });
        EXPECT_EQ(part.m_Weight, 5);
    }
    EXPECT_EQ(TakeReports(), "");
}

TEST_F(RecordTest, SlotsAreAllFilledOrEmptied) {
    const std::string otherCount = Failed("elementCount == data->Size()", "Engine/Archive/Archive");
    const auto expect = [this](const char* lines, std::int32_t first, std::int32_t second, const std::string& reports) {
        Slotted slotted;
        slotted.m_Slots[0].m_Weight = slotted.m_Slots[1].m_Weight = 9;
        LoadText(lines, slotted);
        EXPECT_EQ(TakeReports(), reports) << lines;
        EXPECT_EQ(slotted.m_Slots[0].m_Weight, first) << lines;
        EXPECT_EQ(slotted.m_Slots[1].m_Weight, second) << lines;
    };
    expect("NumSlots 2\nSlot\nWeight 5\nSlot\nWeight 6\n", 5, 6, "");
    expect("Slot\nWeight 5\nSlot\nWeight 6\n", 5, 6, Missing("NumSlots", 1, "Slot\n"));
    expect("NumSlots 3\nSlot\nWeight 5\nSlot\nWeight 6\nSlot\nWeight 7\n", 5, 6, otherCount);
    expect("NumSlots 1\nSlot\nWeight 5\n", 5, 1, otherCount);
    expect("NumSlots -1\n", 1, 1, otherCount);
    expect("NumSlots 2\nSlot\nWeight 5\n", 5, 1, Missing("Slot", 4, ""));
}

TEST_F(RecordTest, ObjectsAreMadeByTheirWord) {
    const auto load = [this](const std::string& file) {
        Shapes shapes;
        Load(file, shapes);
        std::string shown;
        for (const auto& shape : shapes.m_Shapes)
            shown += shape != nullptr ? std::to_string(static_cast<Disc&>(*shape).m_Radius).substr(0, 3) + ' ' : "- ";
        return shown + std::to_string(shapes.m_End);
    };
    const auto leftOut = [](const std::string& word, int index) {
        return "The type '" + word + "' of 'NumShapes' number " + std::to_string(index) +
               " has no class: the entry is left out.\n";
    };
    const std::string unknown = "Failed to convert 'disc' to an enum value.\n";
    const std::string disc = "Type \"Disc\"\nShape\n\tRadius 2.5\n";
    const std::string body = "\"\nShape\n\tSide 3\n";
    EXPECT_EQ(load("TXT\nNumShapes 1\n" + disc + "End 7\n"), "2.5 7");
    // Skipped, but nobody's: behind the nested lines of an entry without class.
    EXPECT_EQ(load("TXT\nNumShapes 1\nType \"Square\"\nShape\n\tSide 3\nother\n\tmore\nEnd 7\n"), "- 7");
    EXPECT_EQ(TakeReports(), leftOut("Square", 0) + "Unread input in 'memory': 2 lines, the first is line 6: other\n");
    EXPECT_EQ(load("TXT\nNumShapes -1\nEnd 7\n"), "7");
    EXPECT_EQ(load("TXT\nNumShapes 1\nType \"Disc\"\nShape\nEnd 7\n"), "1.0 7");
    EXPECT_EQ(TakeReports(), Missing("Radius", 4, "End 7\n"));
    EXPECT_EQ(load("TXT\nNumShapes 2\nType \"Square" + body + disc + "End 7\n"), "- 2.5 7");
    EXPECT_EQ(TakeReports(), leftOut("Square", 0));
    EXPECT_EQ(load("TXT\nNumShapes 2\n" + disc + "Type \"disc" + body + "End 7\n"), "2.5 - 7");
    EXPECT_EQ(TakeReports(), unknown + leftOut("disc", 1));
    EXPECT_EQ(load("TXT\nNumShapes 1\nEnd 7\n"), "- 7"); // a missing word counts as "Invalid"
    EXPECT_EQ(TakeReports(), Missing("Type", 2, "End 7\n") + leftOut("Invalid", 0));

    SpelledFile binary; // where the unknown record ends, nothing tells
    binary.Int("NumShapes", 3).String("Type", "Disc").Float("Radius", 2.5f).String("Type", "Square").Int("Side", 3);
    EXPECT_EQ(load(binary.GetBinary()), "2.5 - 0");
    EXPECT_EQ(TakeReports(), leftOut("Square", 1) + "Unread input in 'memory': 4 bytes, the first at offset 40\n");
}

TEST_F(RecordTest, EnumerationsAreWords) {
    const auto expect = [this](const std::string& word, Paint expected, const std::string& reports) {
        Paint paint = Paint::Glossy;
        EXPECT_EQ(Read("Value \"" + word + '"', [&](Archive& archive) { ReadValue(archive, kValue, paint); }), reports);
        EXPECT_EQ(paint, expected) << word;
    };
    expect("Flat", Paint::Flat, "");
    expect("Invalid", Paint::Invalid, "");
    for (const std::string word : {"flat", "Flat ", ""})
        expect(word, Paint::Invalid, "Failed to convert '" + word + "' to an enum value.\n");
    Paint invalid = Paint::Invalid; // kept without a message of its own, too
    EXPECT_EQ(Read("", [&](Archive& archive) { ReadValue(archive, kValue, invalid); }), Missing("Value", 1, ""));
    EXPECT_EQ(invalid, Paint::Invalid);
    EXPECT_EQ(Write(FloatForm::SixDecimals,
                    [](Archive& archive) {
                        for (const int value : {0, 1, -1, 2})
                            WriteValue(archive, kValue, static_cast<Paint>(value));
                    }),
              "Value \"Flat\"\r\nValue \"Glossy\"\r\nValue \"Invalid\"\r\nValue \"Invalid\"\r\n");
}

} // namespace
} // namespace Corvid

#include "Engine/Layout/DescribedRecord.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "Engine/Archive/ArchiveLists.h"
#include "Engine/Archive/FieldListener.h"
#include "Engine/Archive/NullArchive.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

namespace {

// Has no values: what is loaded from it gets its initial ones.
class EmptyArchive final : public NullArchive {};

// Where conditions look during one way over the tape.
class Slots {
public:
    explicit Slots(const RecordPlan& plan) : m_Slots(plan.GetSlotCount()) {}

    void SetBool(const RecordPlan::Step& step, bool value) {
        if (step.m_Slot != RecordPlan::kNone)
            m_Slots[step.m_Slot] = {true, value, 0};
    }
    void SetWord(const RecordPlan::Step& step, std::size_t units) {
        if (step.m_Slot != RecordPlan::kNone)
            m_Slots[step.m_Slot] = {true, false, units};
    }
    bool Holds(const RecordPlan::When& when, const std::u16string& units) const {
        return when.m_Condition.Holds(m_Slots, units);
    }
    // What stands under a condition that does not hold is not there.
    void Remove(const RecordPlan::When& when) {
        for (std::uint32_t slot = when.m_FirstSlot; slot < when.m_EndSlot; ++slot)
            m_Slots[slot].m_IsThere = false;
    }

private:
    std::vector<ConditionSlot> m_Slots;
};

// Loading ------------------------------------------------------------------------------------------------------------

class Loader {
public:
    Loader(const RecordPlan& plan, DescribedRecord::Tape& tape)
        : m_Plan(plan), m_Tape(tape), m_Slots(plan), m_Buffer(static_cast<std::size_t>(plan.GetBufferSize()), u'\0') {}

    void Load(Archive& archive, LayoutIndex first, LayoutIndex end, bool isReporting = true) {
        const bool wasReporting = std::exchange(m_IsReporting, isReporting);
        for (LayoutIndex index = first; index < end; index = m_Plan[index].m_End)
            LoadStep(archive, index);
        m_IsReporting = wasReporting;
    }

private:
    // The fields of a record that has a label line.
    class Nested final : public Archivable {
    public:
        Nested(Loader& loader, LayoutIndex record) : m_Loader(loader), m_Record(record) {}

        void Load(Archive& archive) override {
            m_Loader.Load(archive, m_Record + 1, m_Loader.m_Plan[m_Record].m_End, m_Loader.m_IsReporting);
            m_IsLoaded = true;
        }
        void Save(Archive&) const override {}

        bool m_IsLoaded = false;

    private:
        Loader& m_Loader;
        LayoutIndex m_Record;
    };

    void LoadStep(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        switch (step.m_Kind) {
        case LayoutKind::Bool: {
            bool value = false;
            archive.ReadBool(step.m_Label, value);
            m_Tape.m_Words.push_back(value ? 1 : 0);
            return m_Slots.SetBool(step, value);
        }
        case LayoutKind::Int:
            return LoadValue<std::int32_t>(archive, step, &Archive::ReadInt);
        case LayoutKind::Int64:
            return LoadValue<std::int64_t>(archive, step, &Archive::ReadInt64);
        case LayoutKind::Float:
            return LoadValue<float>(archive, step, &Archive::ReadFloat);
        case LayoutKind::Double:
            return LoadValue<double>(archive, step, &Archive::ReadDouble);
        case LayoutKind::String:
        case LayoutKind::Word:
            return LoadString(archive, index);
        case LayoutKind::Color:
            return LoadValue<Color>(archive, step, &Archive::ReadColor);
        case LayoutKind::Vector3:
            return LoadValue<Vector3>(archive, step, &Archive::ReadVector3);
        case LayoutKind::Vector4:
            return LoadValue<Vector4>(archive, step, &Archive::ReadVector4);
        case LayoutKind::Pair:
            return LoadValue<IntPair>(archive, step, &Archive::ReadIntPair);
        case LayoutKind::Rect:
            return LoadValue<IntRect>(archive, step, &Archive::ReadIntRect);
        case LayoutKind::Matrix33:
            return LoadValue<Matrix33>(archive, step, &Archive::ReadMatrix33);
        case LayoutKind::Matrix44:
            return LoadValue<Matrix44>(archive, step, &Archive::ReadMatrix44);
        case LayoutKind::Count:
            return LoadList(archive, index);
        case LayoutKind::Record:
            return LoadRecord(archive, index);
        case LayoutKind::Use:
            return Load(archive, index + 1, step.m_End, m_IsReporting);
        case LayoutKind::When:
            return LoadWhen(archive, index);
        }
    }

    // Values lie on the tape as they lie in memory, in words of 32 bits.
    template <class Value>
    void LoadValue(Archive& archive, const RecordPlan::Step& step, void (Archive::*read)(Label, Value&)) {
        static_assert(sizeof(Value) % sizeof(std::uint32_t) == 0);
        Value value{};
        (archive.*read)(step.m_Label, value);
        constexpr std::size_t kWords = sizeof(Value) / sizeof(std::uint32_t);
        std::uint32_t words[kWords];
        std::memcpy(words, &value, sizeof value);
        if constexpr (kWords == 1)
            m_Tape.m_Words.push_back(words[0]);
        else
            m_Tape.m_Words.insert(m_Tape.m_Words.end(), words, words + kWords);
    }

    void LoadString(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        m_Buffer[0] = 0;
        archive.ReadString(step.m_Label, m_Buffer.data(), step.m_Capacity);
        m_Slots.SetWord(step, m_Tape.m_Units.size());
        const std::u16string_view text = m_Buffer.c_str();
        m_Tape.m_Units.append(text).push_back(0);
        if (step.m_Kind != LayoutKind::Word || !m_IsReporting)
            return;
        const LayoutNode& node = m_Plan.GetLayout()[index];
        if (std::find(node.m_Words.begin(), node.m_Words.end(), text) == node.m_Words.end() &&
            !(node.m_IsInvalidAWord && text == kInvalidWord) && !archive.IsStopped())
            ReportMessage(Message::UnknownEnumWord, {text});
    }

    void LoadList(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        const RecordPlan::List& list = m_Plan.GetList(step);
        std::int32_t count = -1;
        archive.ReadInt(step.m_Label, count);
        if (count > ElementBudget::kFewElements)
            count = BoundCount(archive, step.m_Label, count, list.m_Smallest);
        if (m_IsReporting && !archive.IsStopped())
            Check(count == 0 || (count > 0 && step.m_End > index + 1), "count == 0 || IsElementKnown( count )");
        const std::size_t place = m_Tape.m_Words.size();
        m_Tape.m_Words.push_back(0);
        std::int32_t reached = 0;
        if (step.m_End > index + 1) {
            for (; reached < count && !archive.IsStopped(); ++reached)
                Load(archive, index + 1, step.m_End, m_IsReporting);
        }
        m_Tape.m_Words[place] = static_cast<std::uint32_t>(reached);
    }

    void LoadRecord(Archive& archive, LayoutIndex index) {
        Nested nested(*this, index);
        archive.ReadLabeledObject(m_Plan[index].m_Label, nested);
        if (!nested.m_IsLoaded) { // its label is missing
            EmptyArchive empty;
            Load(empty, index + 1, m_Plan[index].m_End, false);
        }
    }

    void LoadWhen(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        const RecordPlan::When& when = m_Plan.GetWhen(step);
        bool isThere = false;
        if (when.m_IsUnknown) {
            isThere = archive.IsNext(when.m_FirstLabel).value_or(false);
            m_Tape.m_Words.push_back(isThere ? 1 : 0);
        } else {
            isThere = m_Slots.Holds(when, m_Tape.m_Units);
        }
        if (isThere)
            Load(archive, index + 1, step.m_End, m_IsReporting);
        else
            m_Slots.Remove(when);
    }

    const RecordPlan& m_Plan;
    DescribedRecord::Tape& m_Tape;
    Slots m_Slots;
    std::u16string m_Buffer;
    bool m_IsReporting = true; // not while fields get their initial values
};

// Saving -------------------------------------------------------------------------------------------------------------

class Saver {
public:
    Saver(const RecordPlan& plan, const DescribedRecord::Tape& tape) : m_Plan(plan), m_Tape(tape), m_Slots(plan) {}

    void Save(Archive& archive, LayoutIndex first, LayoutIndex end) {
        for (LayoutIndex index = first; index < end; index = m_Plan[index].m_End)
            SaveStep(archive, index);
    }

private:
    class Nested final : public Archivable {
    public:
        Nested(Saver& saver, LayoutIndex record) : m_Saver(saver), m_Record(record) {}

        void Load(Archive&) override {}
        void Save(Archive& archive) const override {
            m_Saver.Save(archive, m_Record + 1, m_Saver.m_Plan[m_Record].m_End);
        }

    private:
        Saver& m_Saver;
        LayoutIndex m_Record;
    };

    void SaveStep(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        switch (step.m_Kind) {
        case LayoutKind::Bool: {
            const bool value = TakeWord() != 0;
            m_Slots.SetBool(step, value);
            return archive.WriteBool(step.m_Label, value);
        }
        case LayoutKind::Int:
            return archive.WriteInt(step.m_Label, Take<std::int32_t>());
        case LayoutKind::Int64:
            return archive.WriteInt64(step.m_Label, Take<std::int64_t>());
        case LayoutKind::Float:
            return archive.WriteFloat(step.m_Label, Take<float>());
        case LayoutKind::Double:
            return archive.WriteDouble(step.m_Label, Take<double>());
        case LayoutKind::String:
        case LayoutKind::Word: {
            const char16_t* const text = m_Tape.m_Units.c_str() + m_NextUnit;
            m_Slots.SetWord(step, m_NextUnit);
            m_NextUnit += std::char_traits<char16_t>::length(text) + 1;
            return archive.WriteString(step.m_Label, text);
        }
        case LayoutKind::Color:
            return archive.WriteColor(step.m_Label, Take<Color>());
        case LayoutKind::Vector3:
            return archive.WriteVector3(step.m_Label, Take<Vector3>());
        case LayoutKind::Vector4:
            return archive.WriteVector4(step.m_Label, Take<Vector4>());
        case LayoutKind::Pair:
            return archive.WriteIntPair(step.m_Label, Take<IntPair>());
        case LayoutKind::Rect:
            return archive.WriteIntRect(step.m_Label, Take<IntRect>());
        case LayoutKind::Matrix33:
            return archive.WriteMatrix33(step.m_Label, Take<Matrix33>());
        case LayoutKind::Matrix44:
            return archive.WriteMatrix44(step.m_Label, Take<Matrix44>());
        case LayoutKind::Count:
            return SaveList(archive, index);
        case LayoutKind::Record:
            return archive.WriteLabeledObject(step.m_Label, Nested(*this, index));
        case LayoutKind::Use:
            return Save(archive, index + 1, step.m_End);
        case LayoutKind::When:
            return SaveWhen(archive, index);
        }
    }

    void SaveList(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        const auto count = static_cast<std::int32_t>(TakeWord());
        archive.WriteInt(step.m_Label, count);
        archive.BeginList(step.m_Label, m_Plan.GetList(step).m_ElementLabels);
        for (std::int32_t i = 0; i < count; ++i)
            Save(archive, index + 1, step.m_End);
        archive.EndList();
    }

    void SaveWhen(Archive& archive, LayoutIndex index) {
        const RecordPlan::Step& step = m_Plan[index];
        const RecordPlan::When& when = m_Plan.GetWhen(step);
        if (when.m_IsUnknown ? TakeWord() != 0 : m_Slots.Holds(when, m_Tape.m_Units))
            Save(archive, index + 1, step.m_End);
        else
            m_Slots.Remove(when);
    }

    template <class Value> Value Take() {
        Value value;
        std::memcpy(static_cast<void*>(&value), m_Tape.m_Words.data() + m_NextWord, sizeof value);
        m_NextWord += sizeof value / sizeof(std::uint32_t);
        return value;
    }
    std::uint32_t TakeWord() { return m_Tape.m_Words[m_NextWord++]; }

    const RecordPlan& m_Plan;
    const DescribedRecord::Tape& m_Tape;
    Slots m_Slots;
    std::size_t m_NextWord = 0;
    std::size_t m_NextUnit = 0;
};

// The words of a node, or of a condition, as listeners take them.
std::vector<EnumWord> ListedWords(const std::vector<std::u16string>& words) {
    std::vector<EnumWord> listed;
    for (const std::u16string& word : words)
        listed.push_back(word.c_str());
    return listed;
}

void ListNodes(FieldListener& listener, const RecordPlan& plan, LayoutIndex first, LayoutIndex end) {
    for (LayoutIndex index = first; index < end; index = plan[index].m_End) {
        const RecordPlan::Step& step = plan[index];
        const LayoutNode& node = plan.GetLayout()[index];
        switch (node.m_Kind) {
        case LayoutKind::Record:
            listener.BeginRecord(step.m_Label, node.m_Name);
            ListNodes(listener, plan, index + 1, step.m_End);
            listener.EndRecord();
            break;
        case LayoutKind::Use:
            listener.BeginBlock(node.m_Name);
            ListNodes(listener, plan, index + 1, step.m_End);
            listener.EndBlock();
            break;
        case LayoutKind::Count:
            listener.BeginList(step.m_Label, {node.m_Capacity, node.m_SlotCount});
            ListNodes(listener, plan, index + 1, step.m_End);
            listener.EndList();
            break;
        case LayoutKind::When:
            if (plan.GetWhen(step).m_IsUnknown) {
                ListNodes(listener, plan, index + 1, step.m_End);
                break;
            }
            listener.BeginWhen(plan[node.m_Condition.m_Field].m_Label, ListedWords(node.m_Condition.m_Words),
                               node.m_Condition.m_IsNegated);
            ListNodes(listener, plan, index + 1, step.m_End);
            listener.EndWhen();
            break;
        default: {
            const std::vector<EnumWord> words = ListedWords(node.m_Words);
            FieldShape shape;
            shape.m_Kind = static_cast<FieldKind>(node.m_Kind);
            shape.m_Capacity = step.m_Capacity;
            shape.m_Words = words;
            shape.m_Asset = node.m_Asset;
            shape.m_Range = node.m_Range;
            shape.m_IsInvalidAWord = node.m_IsInvalidAWord;
            shape.m_IsReserved = node.m_IsReserved;
            listener.Value(step.m_Label, shape);
        }
        }
    }
}

} // namespace

DescribedRecord::DescribedRecord(std::shared_ptr<const RecordPlan> plan) : m_Plan(std::move(plan)) {
    LoadDefaults();
}

void DescribedRecord::Load(Archive& archive) {
    m_Tape = Tape();
    try {
        Loader(*m_Plan, m_Tape).Load(archive, 0, m_Plan->GetSize());
    } catch (const std::bad_alloc&) {
        m_Tape = Tape();
        LoadDefaults();
        throw;
    }
}

void DescribedRecord::Save(Archive& archive) const {
    Saver(*m_Plan, m_Tape).Save(archive, 0, m_Plan->GetSize());
}

void DescribedRecord::ListFields(FieldListener& listener) const {
    ListNodes(listener, *m_Plan, 0, m_Plan->GetSize());
}

void DescribedRecord::LoadDefaults() {
    EmptyArchive empty;
    Loader(*m_Plan, m_Tape).Load(empty, 0, m_Plan->GetSize(), false);
}

} // namespace Corvid

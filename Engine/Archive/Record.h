#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <type_traits>

#include "Engine/Archive/Archivable.h"
#include "Engine/Archive/ArchiveLists.h"
#include "Engine/Archive/ArchiveValues.h"
#include "Engine/Archive/FieldLister.h"
#include "Engine/DataStructures/FixedArray.h"

namespace Corvid {

// A record lists its fields once, in archive order; loading and saving both come from that list:
//
//     class Decal final : public Record<Decal> {
//     public:
//         static void Fields(auto& self, auto& fields)
//         {
//             fields.Value(u"Radius", self.m_Radius);
//             fields.List(u"NumDecals", u"Decal", self.m_Decals);
//         }
//
// FieldReader, FieldWriter and FieldLister are the visitors of such a list; every operation stands in each. Facts of a
// field (FieldFacts.h) follow its value; only the lister looks at them.

class FieldReader {
public:
    explicit FieldReader(Archive& archive) : m_Archive(archive), m_Scope(&archive) {}

    // A value under its label.
    void Value(Label label, auto& value, auto...) { ReadValue(m_Archive, label, value); }

    // Fields that are there only where `word`, which was asked for under `label`, makes `isThere` true.
    template <class Word> void When(Label, const Word& word, bool (*isThere)(Word), auto step) {
        if (isThere(word))
            step();
    }

    // A member record whose fields follow directly, without a label line.
    void Block(auto& block) { m_Archive.ReadObject(block); }

    // In the format but not kept: read and dropped, written as given.
    void Reserved(Label label, auto dropped) { Value(label, dropped); }

    // Steps of one direction only.
    void AfterLoad(auto& record, auto step) { step(record); }
    void BeforeSave(auto&, auto) {}
    void Refresh(auto&, auto) {}

    // A count, then so many elements under one label. A missing count goes the way of a negative one.
    void List(Label countLabel, Label label, auto& list) {
        using Element = std::remove_reference_t<decltype(*list.begin())>;
        std::int32_t count = -1;
        Value(countLabel, count);
        if (count < 0)
            m_Archive.GetBudget().NoteNegativeCount();
        if (count > ElementBudget::kFewElements)
            count = BoundCount(m_Archive, countLabel, count, SmallestElement<Element>(label));
        BeginElements(list, count);
        std::int32_t reached = 0;
        const ElementsNotReached rest(list, reached);
        for (; reached < count && !m_Archive.IsStopped(); ++reached) {
            if (IsFull(list)) {
                Element dropped{};
                Value(label, dropped);
                NextElement(list, reached);
            } else {
                Value(label, NextElement(list, reached));
            }
        }
    }

    // A count that is always the number of slots, then an element for each. Elements beyond the slots are dropped,
    // slots without an element are emptied; a missing count is the right one.
    template <class T, int MAX_SIZE>
    void Slots(Label countLabel, Label label, FixedArray<T, MAX_SIZE>& slots, auto...) {
        std::int32_t count = MAX_SIZE;
        Value(countLabel, count);
        CheckElementCount(count, MAX_SIZE);
        if (count > ElementBudget::kFewElements)
            count = BoundCount(m_Archive, countLabel, count, SmallestElement<T>(label));
        for (std::int32_t i = 0; i < std::max(count, MAX_SIZE); ++i) {
            T element{};
            if (i < count)
                Value(label, element);
            if (i < MAX_SIZE)
                slots[i] = element;
        }
    }

    // A count, then for each owned object the word of its type and its record. `create` makes the object of a type, or
    // null where the type has no class: that entry stays empty and its record is skipped, up to the next type word or
    // to one of the labels that follow the list. `afterAppend` runs when an object is in the list, before it is read.
    template <class Type>
    void Objects(Label countLabel, Label typeLabel, Label contentsLabel, std::initializer_list<Label> nextLabels,
                 auto& list, auto create, auto... afterAppend) {
        std::int32_t count = -1;
        Value(countLabel, count);
        if (count < 0)
            m_Archive.GetBudget().NoteNegativeCount();
        if (count > ElementBudget::kFewElements)
            count = BoundCount(m_Archive, countLabel, count, SmallestObject<Type>(typeLabel, contentsLabel, create));
        for (std::int32_t i = 0; i < count && !m_Archive.IsStopped(); ++i) {
            FixedString<kWordCapacity> word(kInvalidWord);
            Value(typeLabel, word);
            auto& object = list.Append();
            object = create(EnumFromWord<Type>(word.GetText()));
            (afterAppend(), ...);
            if (object != nullptr) {
                Value(contentsLabel, *object);
            } else if (!m_Archive.IsStopped()) {
                ReportEntryWithoutClass(word.GetText(), countLabel, i);
                m_Archive.SkipEntry(contentsLabel, typeLabel, nextLabels);
            }
        }
    }

private:
    template <class Type> static ElementSize SmallestObject(Label typeLabel, Label contentsLabel, auto create) {
        constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();
        ElementSize smallest{kUnknown, kUnknown};
        for (int value = 0; value < EnumWordCount<Type>(); ++value) {
            const auto object = create(static_cast<Type>(value));
            if (object == nullptr)
                continue;
            MeasuringArchive archive;
            WriteValue(archive, typeLabel, static_cast<Type>(value));
            WriteValue(archive, contentsLabel, *object);
            smallest.m_BinaryBytes = std::min(smallest.m_BinaryBytes, archive.GetSize().m_BinaryBytes);
            smallest.m_LabelLetters = std::min(smallest.m_LabelLetters, archive.GetSize().m_LabelLetters);
        }
        return smallest;
    }

    Archive& m_Archive;
    PositionScope m_Scope; // whatever is reported is about this archive
};

class FieldWriter {
public:
    explicit FieldWriter(Archive& archive) : m_Archive(archive) {}

    void Value(Label label, const auto& value, auto...) { WriteValue(m_Archive, label, value); }
    template <class Word> void When(Label, const Word& word, bool (*isThere)(Word), auto step) {
        if (isThere(word))
            step();
    }
    void Block(const auto& block) { m_Archive.WriteObject(block); }
    void Reserved(Label label, const auto& written) { Value(label, written); }
    void AfterLoad(const auto&, auto) {}
    void BeforeSave(const auto& record, auto step) { step(record); }

    // A step before saving that changes what was stored, and so is left out where that is wanted.
    void Refresh(const auto& record, auto step) {
        if (!m_Archive.TakesAsStored())
            BeforeSave(record, step);
    }

    void List(Label countLabel, Label label, const auto& list) {
        Value(countLabel, list.GetSize());
        BeginList(countLabel, {label});
        for (const auto& element : list)
            Value(label, element);
        m_Archive.EndList();
    }

    template <class T, int MAX_SIZE>
    void Slots(Label countLabel, Label label, const FixedArray<T, MAX_SIZE>& slots, auto...) {
        Value(countLabel, slots.GetSize());
        BeginList(countLabel, {label});
        for (const T& element : slots)
            Value(label, element);
        m_Archive.EndList();
    }

    // Empty entries are left out, of the count too.
    template <class Type>
    void Objects(Label countLabel, Label typeLabel, Label contentsLabel, std::initializer_list<Label>, const auto& list,
                 auto...) {
        const auto isThere = [](const auto& object) { return object != nullptr; };
        Value(countLabel, static_cast<std::int32_t>(std::count_if(list.begin(), list.end(), isThere)));
        BeginList(countLabel, {typeLabel, contentsLabel});
        for (const auto& object : list) {
            if (object == nullptr)
                continue;
            Value(typeLabel, object->GetType());
            Value(contentsLabel, *object);
        }
        m_Archive.EndList();
    }

private:
    void BeginList(Label countLabel, std::initializer_list<Label> elementLabels) {
        m_Archive.BeginList(countLabel, {elementLabels.begin(), elementLabels.size()});
    }

    Archive& m_Archive;
};

template <class T>
concept IsRecord = requires {
    typename T::RecordTag;
};

// The base of a record with a field list. The fields of a base that is a record itself come first.
template <class T, class Base = Archivable> class Record : public Base {
public:
    using RecordTag = void;
    using Base::Base;
    using Base::Load; // keeps the overload with a context visible

    void Load(Archive& archive) override {
        if constexpr (IsRecord<Base>)
            Base::Load(archive);
        FieldReader fields(archive);
        T::Fields(static_cast<T&>(*this), fields);
    }

    void Save(Archive& archive) const override {
        if constexpr (IsRecord<Base>)
            Base::Save(archive);
        FieldWriter fields(archive);
        T::Fields(static_cast<const T&>(*this), fields);
    }

    void ListFields(FieldListener& listener) const override {
        if constexpr (IsRecord<Base>)
            Base::ListFields(listener);
        FieldLister fields(listener);
        T::Fields(static_cast<const T&>(*this), fields);
    }

    static void Fields() = delete; // a record without a list of its own does not compile
};

} // namespace Corvid

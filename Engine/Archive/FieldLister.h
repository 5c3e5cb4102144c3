#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "Engine/Archive/Archive.h"
#include "Engine/Archive/ArchiveValues.h"
#include "Engine/Archive/FieldListener.h"
#include "Engine/Archive/FieldProbe.h"
#include "Engine/DataStructures/DynamicArray.h"
#include "Engine/DataStructures/DynamicVector.h"
#include "Engine/DataStructures/FixedArray.h"
#include "Engine/DataStructures/FixedVector.h"
#include "Engine/String/ClassName.h"

namespace Corvid {

// The visitor of a field list that tells what the list holds: it runs over a record in its default state and reads or
// writes nothing.
class FieldLister {
public:
    explicit FieldLister(FieldListener& listener) : m_Listener(listener) {}

    template <class T> void Value(Label label, const T& value, auto... facts) {
        FieldShape shape;
        (Note(shape, facts), ...);
        Add(label, value, shape);
    }

    template <class Word> void When(Label label, const Word&, bool (*isThere)(Word), auto step) {
        const bool isNegated = isThere(Word::Invalid);
        std::vector<EnumWord> words;
        for (int value = 0; value < EnumWordCount<Word>(); ++value) {
            if (isThere(static_cast<Word>(value)) != isNegated)
                words.push_back(WordOf(static_cast<Word>(value)));
        }
        m_Listener.BeginWhen(label, words, isNegated);
        step();
        m_Listener.EndWhen();
    }

    template <class T> void Block(const T& block) {
        m_Listener.BeginBlock(ClassNameOf(typeid(block)));
        block.ListFields(m_Listener);
        m_Listener.EndBlock();
    }

    template <class T> void Reserved(Label label, const T& written) {
        FieldShape shape;
        shape.m_IsReserved = true;
        Add(label, written, shape);
    }

    void AfterLoad(const auto&, auto) {}
    void BeforeSave(const auto&, auto) {}
    void Refresh(const auto&, auto) {}

    void List(Label countLabel, Label label, const auto& list) {
        using Element = std::remove_cvref_t<decltype(*list.begin())>;
        m_Listener.BeginList(countLabel, {CapacityOf(list), 0});
        Add(label, Element{}, FieldShape());
        m_Listener.EndList();
    }

    template <class T, int MAX_SIZE>
    void Slots(Label countLabel, Label label, const FixedArray<T, MAX_SIZE>&, auto... facts) {
        FieldShape shape;
        (Note(shape, facts), ...);
        m_Listener.BeginList(countLabel, {MAX_SIZE, MAX_SIZE});
        Add(label, T{}, shape);
        m_Listener.EndList();
    }

    // Words without a class are none that a file may hold.
    template <class Type>
    void Objects(Label countLabel, Label typeLabel, Label contentsLabel, std::initializer_list<Label>, const auto& list,
                 auto create, auto...) {
        FieldShape shape;
        std::vector<EnumWord> words;
        shape.m_Kind = FieldKind::Word;
        shape.m_Capacity = kWordCapacity;
        shape.m_IsInvalidAWord = false;
        for (int value = 0; value < EnumWordCount<Type>(); ++value) {
            if (create(static_cast<Type>(value)) != nullptr)
                words.push_back(WordOf(static_cast<Type>(value)));
        }
        shape.m_Words = words;
        m_Listener.BeginList(countLabel, {CapacityOf(list), 0});
        m_Listener.Value(typeLabel, shape);
        for (int value = 0; value < EnumWordCount<Type>(); ++value) {
            const auto object = create(static_cast<Type>(value));
            if (object == nullptr)
                continue;
            const EnumWord word = WordOf(static_cast<Type>(value));
            m_Listener.BeginWhen(typeLabel, {&word, 1}, false);
            FieldProbe(m_Listener, FieldShape()).ReadLabeledObject(contentsLabel, *object);
            m_Listener.EndWhen();
        }
        m_Listener.EndList();
    }

private:
    static void Note(FieldShape& shape, AssetKind asset) { shape.m_Asset = asset; }
    static void Note(FieldShape& shape, ValueRange range) { shape.m_Range = range; }

    template <class T> void Add(Label label, const T& value, FieldShape shape) {
        if constexpr (HasEnumWords<T>) {
            shape.m_Kind = FieldKind::Word;
            shape.m_Capacity = kWordCapacity;
            shape.m_Words = EnumWords<T>::Words;
            m_Listener.Value(label, shape);
        } else if constexpr (std::derived_from<T, Archivable>) {
            m_Listener.BeginRecord(label, ClassNameOf(typeid(value)));
            value.ListFields(m_Listener);
            m_Listener.EndRecord();
        } else {
            if constexpr (requires { T::kStoredCapacity; })
                shape.m_Capacity = T::kStoredCapacity;
            FieldProbe probe(m_Listener, shape);
            T probed = value;
            ReadValue(probe, label, probed);
        }
    }

    template <class T, int MAX_SIZE> static int CapacityOf(const FixedVector<T, MAX_SIZE>&) { return MAX_SIZE; }
    static int CapacityOf(const auto&) { return ListShape::kUnbounded; }

    FieldListener& m_Listener;
};

} // namespace Corvid

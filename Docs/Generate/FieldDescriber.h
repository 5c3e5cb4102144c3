#pragma once

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Docs/Generate/Manual.h"
#include "Docs/Generate/ProbeArchive.h"
#include "Docs/Generate/ValueText.h"
#include "Engine/Archive/Record.h"
#include "Engine/String/ClassName.h"

namespace Corvid {

// What the field lists say, gathered from record to record.
struct Descriptions {
    std::vector<RecordTable> m_Records; // an owner before what it holds
    std::vector<RecordTable> m_Words;   // of enumerations
    std::set<std::string> m_Described;  // classes and enumerations
    std::set<std::string> m_Mentioned;  // classes that must be described, too
};

// The third visitor of a field list, beside FieldReader and FieldWriter: it has the same operations and notes what
// stands in a file. A field list branches by a word that it has just asked for, which is no member: such a list is
// visited once for each value of the word.
class FieldDescriber {
public:
    // Adds the record, once, and everything that it holds.
    template <class T> static void Describe(Descriptions& all, const T& record);

    template <class T> void Value(Label label, T& value, auto...) {
        using Plain = std::remove_const_t<T>;
        if constexpr (!std::is_const_v<T> && HasEnumWords<Plain>) {
            m_VariantCount = EnumWordCount<Plain>();
            value = static_cast<Plain>(m_Variant);
            Add(label, NoteKind(label, value));
            m_VariantStart = static_cast<std::ptrdiff_t>(m_Rows.size());
            m_Rows.push_back({"", "Where " + Narrow(label) + " is " + Narrow(WordOf(value)) + ":"});
        } else if constexpr (std::derived_from<Plain, Archivable>) {
            Describe(m_All, value);
            Add(label, ClassNameOf(typeid(Plain)));
        } else {
            Add(label, NoteKind(label, value) + ", " + ValueText(label, value));
        }
    }

    template <class Word> void When(Label, const Word& word, bool (*isThere)(Word), auto step) {
        if (isThere(word))
            step();
    }

    template <class T> void Block(const T& block) {
        Describe(m_All, block);
        m_Rows.push_back(FieldsOf<T>());
    }

    template <class T> void Reserved(Label label, const T& written) {
        Add(label, NoteKind(label, written) + ", not kept, written as " + ValueText(label, written));
    }

    void AfterLoad(const auto&, auto) {}
    void BeforeSave(const auto&, auto) {}
    void Refresh(const auto&, auto) {}

    void List(Label countLabel, Label label, const auto& list) {
        Add(countLabel, "count" + CapacityOf(list));
        AddElements<std::remove_cvref_t<decltype(*list.begin())>>(label);
    }

    template <class T, int MAX_SIZE>
    void Slots(Label countLabel, Label label, const FixedArray<T, MAX_SIZE>&, auto...) {
        Add(countLabel, "count, always " + std::to_string(MAX_SIZE));
        AddElements<T>(label);
    }

    template <class Type>
    void Objects(Label countLabel, Label typeLabel, Label contentsLabel, std::initializer_list<Label>, const auto& list,
                 auto create, auto...) {
        Add(countLabel, "count" + CapacityOf(list));
        Add(typeLabel, "each: " + NoteKind(typeLabel, Type::Invalid));
        Add(contentsLabel, "each: the record of that type");
        for (int value = 0; value < EnumWordCount<Type>(); ++value) {
            if (const auto object = create(static_cast<Type>(value)); object != nullptr) {
                const auto& made = *object;
                m_All.m_Mentioned.insert(ClassNameOf(typeid(made)));
            }
        }
    }

private:
    FieldDescriber(Descriptions& all, int variant) : m_All(all), m_Variant(variant) {}

    template <class T, class Base> static std::type_identity<Base> BaseOf(const Record<T, Base>*);

    // What the value is in a file; words and records that it mentions are noted.
    template <class T> std::string NoteKind(Label label, const T& value) {
        if constexpr (HasEnumWords<T>) {
            NoteWords<T>();
            return "word of " + ClassNameOf(typeid(T));
        } else {
            ProbeArchive archive;
            T probed = value;
            ReadValue(archive, label, probed);
            if (archive.IsRecord())
                m_All.m_Mentioned.insert(archive.GetKind());
            return archive.GetKind();
        }
    }

    template <class Enum> void NoteWords() {
        RecordTable table{ClassNameOf(typeid(Enum)), {}};
        if (!m_All.m_Described.insert(table.m_Name).second)
            return;
        for (const EnumWord word : EnumWords<Enum>::Words)
            table.m_Rows.push_back({Narrow(word), ""});
        m_All.m_Words.push_back(std::move(table));
    }

    template <class T> void AddElements(Label label) {
        if constexpr (std::derived_from<T, Archivable>)
            Describe(m_All, T());
        Add(label, "each: " + NoteKind(label, T()));
    }

    template <class T> static FieldRow FieldsOf() { return {"", "the fields of " + ClassNameOf(typeid(T))}; }
    void Add(Label label, std::string text) { m_Rows.push_back({Narrow(label), std::move(text)}); }

    template <class T, int MAX_SIZE> static std::string CapacityOf(const FixedVector<T, MAX_SIZE>&) {
        return ", at most " + std::to_string(MAX_SIZE);
    }
    static std::string CapacityOf(const auto&) { return ""; }

    Descriptions& m_All;
    std::vector<FieldRow> m_Rows;
    int m_Variant;
    int m_VariantCount = 1;
    std::ptrdiff_t m_VariantStart = 0; // the first row that other variants may not have
};

template <class T> void FieldDescriber::Describe(Descriptions& all, const T& record) {
    RecordTable table{ClassNameOf(typeid(T)), {}};
    if (!all.m_Described.insert(table.m_Name).second)
        return;
    const std::size_t place = all.m_Records.size();
    all.m_Records.emplace_back();
    using Base = typename decltype(BaseOf<T>(&record))::type;
    if constexpr (IsRecord<Base>) {
        Describe(all, static_cast<const Base&>(record));
        table.m_Rows.push_back(FieldsOf<Base>());
    }
    FieldDescriber fields(all, 0);
    T::Fields(record, fields);
    table.m_Rows.insert(table.m_Rows.end(), fields.m_Rows.begin(), fields.m_Rows.end());
    for (int variant = 1; variant < fields.m_VariantCount; ++variant) {
        FieldDescriber other(all, variant);
        T::Fields(record, other);
        table.m_Rows.insert(table.m_Rows.end(), other.m_Rows.begin() + other.m_VariantStart, other.m_Rows.end());
    }
    all.m_Records[place] = std::move(table);
}

} // namespace Corvid

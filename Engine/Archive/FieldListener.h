#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Engine/Archive/FieldFacts.h"
#include "Engine/Archive/Label.h"
#include "Engine/String/EnumWords.h"

namespace Corvid {

// What one labelled value is in a file.
enum class FieldKind {
    Bool,
    Int,
    Int64,
    Float,
    Double,
    String,
    Word, // a string out of a closed set
    Color,
    Vector3,
    Vector4,
    Pair,
    Rect,
    Matrix33,
    Matrix44,
};

struct FieldShape {
    FieldKind m_Kind = FieldKind::Int;
    int m_Capacity = 0;                // of a string or word: UTF-16 units, terminator included
    std::span<const EnumWord> m_Words; // of a word, by value from 0; valid while the listener is told
    AssetKind m_Asset = AssetKind::None;
    ValueRange m_Range;
    bool m_IsInvalidAWord = true; // of a word: "Invalid" may stand for the value -1
    bool m_IsReserved = false;    // in the format, but not kept
};

struct ListShape {
    static constexpr int kUnbounded = 0;

    int m_Capacity = kUnbounded; // elements that the object has room for
    int m_SlotCount = 0;         // the only number of elements that is right; 0: any
};

// Takes a record's field list in archive order: the labels and types, not the values. What stands between a Begin and
// its End is nested. Made by FieldLister in Record.h.
class FieldListener {
public:
    virtual void Value(Label label, const FieldShape& shape) = 0;

    // A record under a label line of its own; `name` is its class.
    virtual void BeginRecord(Label label, std::string_view name) = 0;
    virtual void EndRecord() = 0;

    // A record without a label line.
    virtual void BeginBlock(std::string_view name) = 0;
    virtual void EndBlock() = 0;

    // A count and what one element is.
    virtual void BeginList(Label countLabel, const ListShape& shape) = 0;
    virtual void EndList() = 0;

    // Fields that are there only where the nearest earlier word under `label` is one of these, or is none of these.
    virtual void BeginWhen(Label label, std::span<const EnumWord> words, bool isNegated) = 0;
    virtual void EndWhen() = 0;

protected:
    ~FieldListener() = default;
};

} // namespace Corvid

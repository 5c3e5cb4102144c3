#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Corvid {

enum class DiagnosticCode {
    CannotRead,
    CannotWrite,
    NotAnArchive,
    UnknownKind,
    KindDiffers,
    UnknownType,
    NoLayout,
    MissingField,
    UnknownLabel,
    OutOfOrder,
    BadValue,
    BadString,
    TooLong,
    BadText,
    UnknownWord,
    BadCount,
    InputEnds,
    UnreadInput,
    NotInText,
    NotFinite,
    IndexRange,
    DegenerateTriangle,
    Bounds,
    StaleLists,
    Unattached,
    DuplicateName,
    EmptyName,
    MissingReference,
    Unproven,
    BadLayout,
    Loss,
    NotImported,
    Refused, // a result that could not be verified
};

enum class Severity { Note, Warning, Error };

// "missing-field" and the like, as users write and filter them.
std::string_view WordOf(DiagnosticCode code);
std::string_view WordOf(Severity severity);

// What the code says of itself; a few codes come with either.
Severity SeverityOf(DiagnosticCode code);

// Where in the file: a line and column of a text, both from 1, in characters; or an offset in bytes; or nowhere.
struct DiagnosticPlace {
    enum class Kind { None, Line, Offset };

    Kind m_Kind = Kind::None;
    std::uint64_t m_Line = 0;
    std::uint64_t m_Column = 0;
    std::uint64_t m_Offset = 0;

    static DiagnosticPlace AtLine(std::uint64_t line, std::uint64_t column) { return {Kind::Line, line, column, 0}; }
    static DiagnosticPlace AtOffset(std::uint64_t offset) { return {Kind::Offset, 0, 0, offset}; }
};

// One finding about one file. The file's printed path is added by whoever prints it.
struct Diagnostic {
    DiagnosticCode m_Code = DiagnosticCode::BadValue;
    Severity m_Severity = Severity::Error;
    DiagnosticPlace m_Place;
    std::string m_Field;         // path of the field; empty: none
    std::string m_Message;       // a lower-case clause in UTF-8, without a full stop
    bool m_StaysWarning = false; // where warnings are errors, too
};

// The path of the field without its indices, in brackets that stay: "MeshData.Triangle[].iMaterial".
std::string FieldOfAnyElement(const std::string& field);

} // namespace Corvid

#pragma once

namespace Corvid {

// Every message that the engine can report. Their texts and the order of their arguments stand in
// Engine/String/ReportText.cpp.
enum class Message {
    // Files and archives
    FailedToOpenFile,   // path
    FailedToReadFile,   // path, elements asked for, elements obtained
    UndetectedEncoding, // path
    MissingLabel,       // path, label, look-ups so far, the line
    UnterminatedString, // text behind the quote, path, look-ups so far, the line
    UnknownEnumWord,    // word
    VersionedFileNotFound,
    VersionedFileFailedToOpen,
    VersionedFileOld,
    CountCut,      // label, claimed count, used count
    UnreadLines,   // path, lines, number of the first, the first
    UnreadBytes,   // path, bytes, offset of the first
    EndlessSource, // path, bytes that were read
    FailedSource,  // path
    OutOfMemory,

    // Meshes
    MeshNotFound,      // path
    DataFileNotFound,  // name, folder
    OtherMeshFileUsed, // path asked for, path used

    // Particle effects
    EntryWithoutClass, // type word, label of the list, index

    // Entity definitions
    EntityNameTooLong,    // name
    IncompleteLayout,     // type word
    DefinitionNotWritten, // name

    // Reports
    ReportsLeftOut, // number of reports
};

} // namespace Corvid

#include "Engine/String/ReportText.h"

#include <string_view>

#include "Engine/String/NumberFormat.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

const char16_t* FormatOf(Message message) {
    switch (message) {
    case Message::FailedToOpenFile:
        return u"Failed to Open File: '%s'\n";
    case Message::FailedToReadFile:
        return u"Failed to Read File '%s'. desired read bytes = %d, actual read bytes = %d.\n";
    case Message::UndetectedEncoding:
        return u"Could not detect if Archive File is Binary or Text: %s";
    case Message::MissingLabel:
        return u"Text FileArchive missing Label.\n\nFile: %s\nLabel: %s\nLine Number:%d\nLine Contents:%s\n";
    case Message::UnterminatedString:
        return u"\" not found wrapping data string: %s\nFileName: %s\nLine #: %d\nLine Content: %s";
    case Message::UnknownEnumWord:
        return u"Failed to convert '%s' to an enum value.\n";
    case Message::VersionedFileNotFound:
        return u"%s not found... New Version being created.\n";
    case Message::VersionedFileFailedToOpen:
        return u"%s failed to open... New Version being created.\n";
    case Message::VersionedFileOld:
        return u"Detected old version of %s... New Version being created.\n";
    case Message::CountCut:
        return u"The count '%s' claims %d elements, more than the rest of the input can hold: %d are taken.\n";
    case Message::UnreadLines:
        return u"Unread input in '%s': %d lines, the first is line %d: %s\n";
    case Message::UnreadBytes:
        return u"Unread input in '%s': %d bytes, the first at offset %d\n";
    case Message::EndlessSource:
        return u"The source '%s' does not end: reading stops after %d bytes.\n";
    case Message::FailedSource:
        return u"The source '%s' cannot be read further: reading stops here.\n";
    case Message::OutOfMemory:
        return u"There is not enough memory for this conversion.\n";
    case Message::MeshNotFound:
        return u"Could not find Mesh: %s\n";
    case Message::DataFileNotFound:
        return u"Failed to find data file '%s'. (SubPath = %s)\n";
    case Message::OtherMeshFileUsed:
        return u"The mesh '%s' is loaded from the file '%s'.\n";
    case Message::EntryWithoutClass:
        return u"The type '%s' of '%s' number %d has no class: the entry is left out.\n";
    case Message::EntityNameTooLong:
        return u"EntityDefName is too long: %s\n";
    case Message::IncompleteLayout:
        return u"The layout of entity type '%s' is incomplete: only its known fields are converted, and they may "
               u"stand at another place and so be wrong.\n";
    case Message::DefinitionNotWritten:
        return u"The definition '%s' is not written: its layout is incomplete, and the file holds more than is "
               u"known.\n";
    case Message::ReportsLeftOut:
        return u"%d further reports are left out.\n";
    }
    return u"";
}

// A stretch of a file, its CR LF as "\n" and its ill-formed parts replaced.
void AppendFileText(std::string& text, std::string_view bytes) {
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        if (*position == '\r' && position + 1 != end && position[1] == '\n')
            ++position;
        char encoded[kMaxUtf8Bytes];
        text.append(encoded, EncodeUtf8(encoded, DecodeUtf8(position, end)));
    }
}

void AppendArgument(std::string& text, const ReportArgument& argument) {
    switch (argument.GetKind()) {
    case ReportArgument::Kind::Integer: {
        char digits[kMaxInt64Text + kFormatSlack];
        text.append(digits, FormatInt64(digits, argument.GetInteger()));
        break;
    }
    case ReportArgument::Kind::Utf8:
        AppendFileText(text, argument.GetUtf8());
        break;
    case ReportArgument::Kind::Utf16:
        AppendUtf8(text, argument.GetUtf16());
        break;
    }
}

void AppendMessage(std::string& text, const Report& report) {
    const ReportArgument* argument = report.m_Arguments.data();
    const ReportArgument* const end = argument + report.m_Arguments.size();
    for (const char16_t* c = FormatOf(report.m_Message); *c != 0; ++c) {
        if (*c == u'%' && argument != end) {
            AppendArgument(text, *argument++);
            ++c; // the conversion letter: the argument's kind decides
        } else {
            text.push_back(static_cast<char>(*c)); // formats are ASCII
        }
    }
}

// A source file by its path under the engine's root, without extension.
std::string_view SourceFileName(std::string_view path) {
    for (const std::string_view root : {"Engine/", "GS/", "Recast/"}) {
        if (const std::size_t start = path.rfind(root); start != path.npos) {
            path.remove_prefix(start);
            break;
        }
    }
    return path.substr(0, path.rfind('.'));
}

void AppendFailedCheck(std::string& text, const Report& report) {
    text.append("Assertion failed: ").append(report.m_Condition);
    text.append(" (").append(SourceFileName(report.m_SourceFile)).append(", line ");
    AppendArgument(text, report.m_SourceLine);
    text.append(")\n");
}

} // namespace

void AppendReportText(std::string& text, const Report& report) {
    if (report.m_Kind == Report::Kind::Message)
        AppendMessage(text, report);
    else
        AppendFailedCheck(text, report);
}

} // namespace Corvid

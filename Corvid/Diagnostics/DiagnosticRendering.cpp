#include "Corvid/Diagnostics/DiagnosticRendering.h"

#include "Corvid/Json/Json.h"

namespace Corvid {

namespace {

std::string MoreText(const ShownDiagnostic& shown) {
    return "... and " + std::to_string(shown.m_More) + " more";
}

std::string ClosingText(const ShownDiagnostic& shown) {
    return std::to_string(shown.m_More) + " diagnostics left out";
}

std::string_view ColorOf(Severity severity) {
    constexpr std::string_view kColors[] = {"\x1b[1;36m", "\x1b[1;35m", "\x1b[1;31m"};
    return kColors[static_cast<std::size_t>(severity)];
}

// "FILE:LINE:COLUMN:", "FILE:@OFFSET:" or "FILE:".
std::string PlaceOf(std::string_view file, const DiagnosticPlace& place) {
    std::string text(file);
    if (place.m_Kind == DiagnosticPlace::Kind::Line)
        text += ":" + std::to_string(place.m_Line) + ":" + std::to_string(place.m_Column);
    else if (place.m_Kind == DiagnosticPlace::Kind::Offset)
        text += ":@" + std::to_string(place.m_Offset);
    return text + ":";
}

void AppendText(std::string& out, std::string_view file, const ShownDiagnostic& shown, bool hasColor) {
    const auto inColor = [&](std::string_view color, std::string_view text) {
        return hasColor ? std::string(color).append(text).append("\x1b[0m") : std::string(text);
    };
    const Diagnostic& diagnostic = shown.m_Diagnostic;
    out += inColor("\x1b[1m", PlaceOf(file, diagnostic.m_Place)) + " ";
    if (shown.m_IsClosing) {
        out += ClosingText(shown) + "\n";
        return;
    }
    out += inColor(ColorOf(diagnostic.m_Severity), std::string(WordOf(diagnostic.m_Severity)) + ":") + " ";
    if (!diagnostic.m_Field.empty())
        out += diagnostic.m_Field + ": ";
    out += shown.m_More > 0 ? MoreText(shown) : diagnostic.m_Message;
    out.append(" [").append(WordOf(diagnostic.m_Code)).append("]\n");
}

void AppendJson(std::string& out, std::string_view file, const ShownDiagnostic& shown) {
    const Diagnostic& diagnostic = shown.m_Diagnostic;
    Json json;
    json["file"] = file;
    if (shown.m_IsClosing) {
        json["severity"] = WordOf(Severity::Note);
        json["more"] = shown.m_More;
        out += JsonLine(json);
        return;
    }
    if (diagnostic.m_Place.m_Kind == DiagnosticPlace::Kind::Line) {
        json["line"] = diagnostic.m_Place.m_Line;
        json["column"] = diagnostic.m_Place.m_Column;
    } else if (diagnostic.m_Place.m_Kind == DiagnosticPlace::Kind::Offset) {
        json["offset"] = diagnostic.m_Place.m_Offset;
    }
    json["severity"] = WordOf(diagnostic.m_Severity);
    json["code"] = WordOf(diagnostic.m_Code);
    if (!diagnostic.m_Field.empty())
        json["field"] = diagnostic.m_Field;
    if (shown.m_More > 0)
        json["more"] = shown.m_More;
    else
        json["message"] = diagnostic.m_Message;
    out += JsonLine(json);
}

// Workflow commands escape the ends of lines and their own marks; values of properties a few more.
std::string EscapeForWorkflow(std::string_view text, bool isProperty) {
    std::string out;
    for (const char unit : text) {
        if (unit == '%')
            out += "%25";
        else if (unit == '\r')
            out += "%0D";
        else if (unit == '\n')
            out += "%0A";
        else if (isProperty && unit == ':')
            out += "%3A";
        else if (isProperty && unit == ',')
            out += "%2C";
        else
            out.push_back(unit);
    }
    return out;
}

void AppendWorkflowCommand(std::string& out, std::string_view file, const ShownDiagnostic& shown) {
    constexpr std::string_view kCommands[] = {"::notice", "::warning", "::error"};
    const Diagnostic& diagnostic = shown.m_Diagnostic;
    const Severity severity = shown.m_IsClosing ? Severity::Note : diagnostic.m_Severity;
    out.append(kCommands[static_cast<std::size_t>(severity)]).append(" file=").append(EscapeForWorkflow(file, true));
    if (diagnostic.m_Place.m_Kind == DiagnosticPlace::Kind::Line)
        out += ",line=" + std::to_string(diagnostic.m_Place.m_Line) +
               ",col=" + std::to_string(diagnostic.m_Place.m_Column);
    if (shown.m_IsClosing) {
        out += "::" + ClosingText(shown) + "\n";
        return;
    }
    out.append(",title=").append(WordOf(diagnostic.m_Code)).append("::");
    std::string text;
    if (diagnostic.m_Place.m_Kind == DiagnosticPlace::Kind::Offset)
        text = "@" + std::to_string(diagnostic.m_Place.m_Offset) + ": ";
    if (!diagnostic.m_Field.empty())
        text += diagnostic.m_Field + ": ";
    text += shown.m_More > 0 ? MoreText(shown) : diagnostic.m_Message;
    out += EscapeForWorkflow(text, false);
    out.append(" [").append(WordOf(diagnostic.m_Code)).append("]\n");
}

} // namespace

void AppendDiagnostic(std::string& out, std::string_view path, std::string_view printedPath,
                      const ShownDiagnostic& shown, const DiagnosticStyle& style) {
    switch (style.m_Format) {
    case DiagnosticFormat::Text:
        AppendText(out, printedPath, shown, style.m_HasColor);
        break;
    case DiagnosticFormat::Json:
        AppendJson(out, path, shown);
        break;
    case DiagnosticFormat::Github:
        AppendWorkflowCommand(out, path, shown);
        break;
    }
}

std::string SummaryJson(std::uint64_t files, std::uint64_t errors, std::uint64_t warnings) {
    Json json;
    json["summary"]["files"] = files;
    json["summary"]["errors"] = errors;
    json["summary"]["warnings"] = warnings;
    return JsonLine(json);
}

} // namespace Corvid

#include "Corvid/View/PageWriter.h"

#include <utility>

#include "Corvid/Json/Json.h"
#include "Corvid/View/Base64.h"

namespace Corvid {

namespace {

constexpr std::size_t kSizeWidth = 20; // characters that the page's own size takes in it, whatever it is

std::string SourceOf(const PageAsset& asset) {
    return " 'sha256-" + ToBase64(BytesOfHex(asset.m_Sha256)) + "'";
}

// Nothing is fetched, sent or run but the page's own.
std::string PolicyOf(const PageAssets& assets) {
    return "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src" +
           SourceOf(assets.m_Script) + SourceOf(assets.m_Library) + "; style-src" + SourceOf(assets.m_Style) +
           "; base-uri 'none'; form-action 'none'\">";
}

std::string PlaceText(const DiagnosticPlace& place) {
    switch (place.m_Kind) {
    case DiagnosticPlace::Kind::Line:
        return std::to_string(place.m_Line) + ":" + std::to_string(place.m_Column);
    case DiagnosticPlace::Kind::Offset:
        return "@" + std::to_string(place.m_Offset);
    case DiagnosticPlace::Kind::None:
        break;
    }
    return {};
}

// In JSON a '<' stands in strings only, where an escape can take its place: nothing ends the element or begins a
// comment.
std::string WithoutMarkup(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    for (const char c : json) {
        if (c == '<')
            result += "\\u003c";
        else
            result += c;
    }
    return result;
}

Json DiagnosticJson(const ShownDiagnostic& shown) {
    const Diagnostic& diagnostic = shown.m_Diagnostic;
    if (shown.m_IsClosing)
        return {{"leftOut", shown.m_More}};
    return {{"severity", WordOf(diagnostic.m_Severity)},
            {"code", WordOf(diagnostic.m_Code)},
            {"place", PlaceText(diagnostic.m_Place)},
            {"field", diagnostic.m_Field},
            {"message", shown.m_More > 0 ? "... and " + std::to_string(shown.m_More) + " more" : diagnostic.m_Message}};
}

std::string EntryJson(const ViewEntry& entry) {
    Json json = {{"file", entry.m_Path},
                 {"kind", entry.m_Kind},
                 {"encoding", entry.m_Encoding},
                 {"entityType", entry.m_EntityType},
                 {"bytes", entry.m_Size},
                 {"errors", entry.m_ErrorCount},
                 {"warnings", entry.m_WarningCount},
                 {"diagnostics", Json::array()}};
    for (const ShownDiagnostic& shown : entry.m_Diagnostics)
        json["diagnostics"].push_back(DiagnosticJson(shown));
    return WithoutMarkup(JsonText(json));
}

} // namespace

PageWriter::PageWriter(const PageAssets& assets, std::uint64_t maxSize, Sink sink)
    : m_Assets(assets), m_MaxSize(maxSize), m_Sink(std::move(sink)), m_Template(assets.m_Template.m_Bytes) {
    Write(TemplateUntil("policy"));
    Write(PolicyOf(m_Assets));
    Write(TemplateUntil("style"));
    Write("<style>");
    Write(m_Assets.m_Style.m_Bytes);
    Write("</style>");
    Write(TemplateUntil("licence"));
    Write(m_Assets.m_Licence.m_Bytes);
    Write(TemplateUntil("data"));
}

void PageWriter::Add(const ViewEntry& entry) {
    const std::string number = std::to_string(m_EntryCount++);
    if (!entry.m_Values.empty())
        WriteBlock("values-" + number, "application/json", WithoutMarkup(entry.m_Values));
    if (!entry.m_Model.empty()) {
        WriteBlock("model-" + number, "model/gltf-binary", ToBase64(entry.m_Model));
        WriteBlock("lists-" + number, "application/json", entry.m_VertexLists);
        m_HasModel = true;
    }
    m_Files += (m_Files.empty() ? "\n" : ",\n") + EntryJson(entry);
}

void PageWriter::Finish() {
    std::string end = "\n]}</script>";
    end += TemplateUntil("scripts");
    if (m_HasModel)
        end.append("<script>").append(m_Assets.m_Library.m_Bytes).append("</script>\n");
    end.append("<script type=\"module\">").append(m_Assets.m_Script.m_Bytes).append("</script>");
    end += m_Template;

    // The page tells its own size.
    static constexpr std::string_view kBegin = "<script id=\"index\" type=\"application/json\">{\"pageBytes\":";
    static constexpr std::string_view kMiddle = ",\"files\":[";
    std::string size =
        std::to_string(m_Size + kBegin.size() + kSizeWidth + kMiddle.size() + m_Files.size() + end.size());
    size.insert(0, kSizeWidth - size.size(), ' ');
    for (const std::string_view part :
         {kBegin, std::string_view(size), kMiddle, std::string_view(m_Files), std::string_view(end)})
        Write(part);
}

void PageWriter::Write(std::string_view bytes) {
    m_Size += bytes.size();
    if (!IsTooLarge() && !m_HasFailed)
        m_HasFailed = !m_Sink(bytes);
}

std::string_view PageWriter::TemplateUntil(std::string_view place) {
    const std::string mark = "<!-- @" + std::string(place) + "@ -->";
    const std::size_t end = m_Template.find(mark);
    const std::string_view before = m_Template.substr(0, end);
    m_Template = end == std::string_view::npos ? std::string_view() : m_Template.substr(end + mark.size());
    return before;
}

void PageWriter::WriteBlock(std::string_view name, std::string_view type, std::string_view content) {
    Write("<script id=\"" + std::string(name) + "\" type=\"" + std::string(type) + "\">");
    Write(content);
    Write("</script>\n");
}

} // namespace Corvid

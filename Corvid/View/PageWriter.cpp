#include "Corvid/View/PageWriter.h"

#include <utility>

#include "Corvid/View/Base64.h"
#include "Corvid/View/PageJson.h"

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

std::string Member(std::string_view name, std::string_view text) {
    return "\"" + std::string(name) + "\":" + PageString(text);
}

std::string DiagnosticJson(const Diagnostic& diagnostic) {
    return "{" + Member("severity", WordOf(diagnostic.m_Severity)) + "," + Member("code", WordOf(diagnostic.m_Code)) +
           "," + Member("place", PlaceText(diagnostic.m_Place)) + "," + Member("field", diagnostic.m_Field) + "," +
           Member("message", diagnostic.m_Message) + "}";
}

std::string EntryJson(const ViewEntry& entry) {
    std::string json = "{" + Member("file", entry.m_Path) + "," + Member("kind", entry.m_Kind) + "," +
                       Member("encoding", entry.m_Encoding) + "," + Member("entityType", entry.m_EntityType) +
                       ",\"bytes\":" + std::to_string(entry.m_Size) + ",\"diagnostics\":[";
    for (const Diagnostic& diagnostic : entry.m_Diagnostics)
        json += (&diagnostic == entry.m_Diagnostics.data() ? "" : ",") + DiagnosticJson(diagnostic);
    return json + "],\"leftOut\":" + std::to_string(entry.m_LeftOutCount) + "}";
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
    std::string size = std::to_string(m_Size + kBegin.size() + kSizeWidth + kMiddle.size() + m_Files.size() + end.size());
    size.insert(0, kSizeWidth - size.size(), ' ');
    for (const std::string_view part : {kBegin, std::string_view(size), kMiddle, std::string_view(m_Files),
                                        std::string_view(end)})
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

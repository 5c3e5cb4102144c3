#include "Corvid/Svg/BrushSheet.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "Corvid/Svg/SvgText.h"
#include "Engine/Archive/LabelText.h"

namespace Corvid {

namespace {

// In units of the sheet, which are pixels of the textures.
constexpr std::int64_t kGap = 24;
constexpr std::int64_t kLineHeight = 16;
constexpr std::int64_t kUnitsPerLetter = 8;  // of the monospaced captions
constexpr std::int64_t kLargestSide = 16384; // no texture is larger: such a box is told, not drawn
constexpr std::int64_t kPlaceholderSide = 64;

constexpr const char* kStretchColor = "#c02020";
constexpr const char* kContentColor = "#2040c0";

std::string Attribute(const char* name, std::int64_t value) {
    return std::string(" ") + name + "=\"" + std::to_string(value) + '"';
}

std::string Text(std::int64_t x, std::int64_t y, const std::string& escaped, bool isBold = false) {
    return "<text" + Attribute("x", x) + Attribute("y", y) + (isBold ? " font-weight=\"bold\"" : "") + ">" + escaped +
           "</text>\n";
}

std::string Line(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, const char* color) {
    return "<line" + Attribute("x1", x1) + Attribute("y1", y1) + Attribute("x2", x2) + Attribute("y2", y2) +
           " stroke=\"" + color + "\" stroke-dasharray=\"4 2\"/>\n";
}

// How a state is labelled and drawn.
struct Picture {
    std::string m_Captions[2]; // escaped
    std::int64_t m_Letters = 0;
    IntRect m_Box;

    bool IsDrawn() const {
        return m_Box.width >= 0 && m_Box.height >= 0 && m_Box.width <= kLargestSide && m_Box.height <= kLargestSide;
    }
    std::int64_t GetWidth() const { return IsDrawn() ? m_Box.width : kPlaceholderSide; }
    std::int64_t GetHeight() const { return IsDrawn() ? m_Box.height : kPlaceholderSide; }
    std::int64_t GetColumnWidth() const { return std::max(GetWidth(), m_Letters * kUnitsPerLetter) + kGap; }
};

Picture MakePicture(std::string_view state, const Brush::StateInfo& info) {
    Picture picture;
    picture.m_Box = info.GetPixelBox().GetRect();
    const IntRect& box = picture.m_Box;
    const std::u16string_view texture = info.GetTexture().GetName();
    const std::string place = std::to_string(box.width) + " x " + std::to_string(box.height) + " at " +
                              std::to_string(box.x) + ", " + std::to_string(box.y);
    picture.m_Captions[0] = std::string(state) + ": " + SvgText(texture);
    picture.m_Captions[1] = place + (picture.IsDrawn() ? "" : " (not drawn)");
    picture.m_Letters = std::max(static_cast<std::int64_t>(state.size() + 2 + texture.size()),
                                 static_cast<std::int64_t>(picture.m_Captions[1].size()));
    return picture;
}

std::vector<Picture> MakePictures(const Brush& brush) {
    const auto& states = brush.GetStates();
    const bool areAlike = std::all_of(states.begin(), states.end(),
                                      [&](const Brush::StateInfo& state) { return state.LooksLike(states[0]); });
    if (areAlike)
        return {MakePicture("All states", states[0])};
    std::vector<Picture> pictures;
    for (int i = 0; i < Brush::kStateCount; ++i)
        pictures.push_back(MakePicture(LabelText(Brush::kStateLabels[i]), states[i]));
    return pictures;
}

// Margins that lie outside the box are not drawn; the caption has them all.
std::string DrawMargins(const Brush::Margins& margins, const Picture& picture, std::int64_t x, std::int64_t y,
                        const char* color) {
    std::string lines;
    const std::int64_t width = picture.GetWidth(), height = picture.GetHeight();
    const auto across = [&](std::int64_t at) {
        if (at > 0 && at < width)
            lines += Line(x + at, y, x + at, y + height, color);
    };
    const auto along = [&](std::int64_t at) {
        if (at > 0 && at < height)
            lines += Line(x, y + at, x + width, y + at, color);
    };
    across(margins.GetLeft());
    across(width - margins.GetRight());
    along(margins.GetTop());
    along(height - margins.GetBottom());
    return lines;
}

std::string DrawPicture(const Brush& brush, const Picture& picture, std::int64_t x, std::int64_t y) {
    std::string drawing = "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", picture.GetWidth()) +
                          Attribute("height", picture.GetHeight()) + " fill=\"#e8ecf0\" stroke=\"#404040\"/>\n";
    if (picture.IsDrawn()) {
        drawing += DrawMargins(brush.GetStretchMargins(), picture, x, y, kStretchColor);
        drawing += DrawMargins(brush.GetContentMargins(), picture, x, y, kContentColor);
    }
    return drawing;
}

std::string MarginsText(const char* word, const Brush::Margins& margins) {
    return margins.AreZero() ? std::string()
                             : std::string("; ") + word + " left " + std::to_string(margins.GetLeft()) + ", right " +
                                   std::to_string(margins.GetRight()) + ", top " + std::to_string(margins.GetTop()) +
                                   ", bottom " + std::to_string(margins.GetBottom());
}

class Sheet {
public:
    explicit Sheet(const std::string& title) { AddText(title, true); }

    void AddText(const std::string& escaped, bool isBold = false, std::int64_t indent = 0) {
        m_Y += kLineHeight;
        m_Body += Text(kGap + indent, m_Y, escaped, isBold);
        m_Width = std::max(m_Width, kGap * 2 + indent + static_cast<std::int64_t>(escaped.size()) * kUnitsPerLetter);
    }

    void AddBrush(const Brush& brush) {
        m_Y += kGap;
        m_Body += "<g>\n";
        AddText(SvgText(brush.GetName().GetView()) + MarginsText("stretch", brush.GetStretchMargins()) +
                    MarginsText("content", brush.GetContentMargins()),
                true);
        const std::vector<Picture> pictures = MakePictures(brush);
        std::int64_t x = kGap, height = 0;
        for (const Picture& picture : pictures) {
            for (int i = 0; i < 2; ++i)
                m_Body += Text(x, m_Y + kLineHeight * (i + 1), picture.m_Captions[i]);
            m_Body += DrawPicture(brush, picture, x, m_Y + kLineHeight * 2 + kLineHeight / 2);
            x += picture.GetColumnWidth();
            height = std::max(height, picture.GetHeight());
        }
        m_Body += "</g>\n";
        m_Y += kLineHeight * 2 + kLineHeight / 2 + height;
        m_Width = std::max(m_Width, x);
    }

    std::string Finish(const std::string& title) const {
        const std::int64_t height = m_Y + kGap;
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
               Attribute("width", m_Width) + Attribute("height", height) + " viewBox=\"0 0 " + std::to_string(m_Width) +
               " " + std::to_string(height) + "\" font-family=\"monospace\" font-size=\"12\" fill=\"#202020\">\n" +
               "<title>" + title + "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" + m_Body +
               "</svg>\n";
    }

private:
    std::string m_Body;
    std::int64_t m_Width = 0;
    std::int64_t m_Y = kGap / 2;
};

} // namespace

std::string MakeBrushSheet(const BrushSystem::BrushSet& set, std::u16string_view title) {
    const std::string escaped = SvgText(title);
    Sheet sheet(escaped);
    sheet.AddText("Boxes are to scale, a pixel a unit. Red: margins that stretch. Blue: margins of the content.");
    for (const Brush& brush : set.GetBrushes())
        sheet.AddBrush(brush);
    return sheet.Finish(escaped);
}

} // namespace Corvid

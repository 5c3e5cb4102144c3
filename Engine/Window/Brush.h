#pragma once

#include <cstdint>

#include "Engine/Archive/Record.h"
#include "Engine/Render/TextureReference.h"
#include "Engine/Window/BrushContent.h"
#include "Engine/Window/PixelBox.h"

namespace Corvid {

// A named piece of user-interface artwork: a rectangle of a texture for each state of a widget, and the margins that
// divide it into nine slices.
class Brush final : public Record<Brush> {
public:
    // In pixels.
    class Margins final : public Record<Margins> {
    public:
        static void Fields(auto& self, auto& fields) {
            fields.Value(u"left", self.m_Left);
            fields.Value(u"right", self.m_Right);
            fields.Value(u"top", self.m_Top);
            fields.Value(u"bottom", self.m_Bottom);
        }

        bool AreZero() const { return m_Left == 0 && m_Right == 0 && m_Top == 0 && m_Bottom == 0; }

        std::int32_t GetLeft() const { return m_Left; }
        std::int32_t GetRight() const { return m_Right; }
        std::int32_t GetTop() const { return m_Top; }
        std::int32_t GetBottom() const { return m_Bottom; }

    private:
        std::int32_t m_Left = 0;
        std::int32_t m_Right = 0;
        std::int32_t m_Top = 0;
        std::int32_t m_Bottom = 0;
    };

    // How the brush looks in one state of its widget.
    class StateInfo final : public Record<StateInfo> {
    public:
        static void Fields(auto& self, auto& fields) {
            fields.Value(u"fileName", self.m_Texture, AssetKind::Texture);
            fields.Value(u"pixelBox", self.m_PixelBox);
        }

        const TextureReference& GetTexture() const { return m_Texture; }
        const PixelBox& GetPixelBox() const { return m_PixelBox; }
        void ReturnTexture() { m_Texture.Return(); }

        bool LooksLike(const StateInfo& other) const {
            return m_Texture == other.m_Texture && m_PixelBox == other.m_PixelBox;
        }

    private:
        TextureReference m_Texture;
        PixelBox m_PixelBox;
    };

    static constexpr int kStateCount = 5;
    static constexpr Label kStateLabels[kStateCount] = {u"Disabled", u"Pressed", u"CursorOver", u"Focused", u"Normal"};

    static void Fields(auto& self, auto& fields) {
        fields.Value(u"name", self.m_Name);
        auto content = BrushContent::Invalid;
        fields.BeforeSave(self, [&content](const Brush& brush) { content = brush.DeriveContent(); });
        fields.Value(u"content", content);
        fields.When(u"content", content, HasMargins, [&] {
            fields.Value(u"stretchMargins", self.m_StretchMargins);
            fields.Value(u"contentMargins", self.m_ContentMargins);
        });
        fields.When(u"content", content, HasStates, [&] {
            for (int i = 0; i < kStateCount; ++i)
                fields.Value(kStateLabels[i], self.m_States[i]);
        });
        fields.When(u"content", content, HasOneState, [&] {
            fields.Block(self.m_States[0]);
            fields.AfterLoad(self, [](Brush& brush) { brush.GiveAllStatesTheFirst(); });
        });
    }

    const FixedString<128>& GetName() const { return m_Name; }
    const FixedArray<StateInfo, kStateCount>& GetStates() const { return m_States; }
    const Margins& GetStretchMargins() const { return m_StretchMargins; }
    const Margins& GetContentMargins() const { return m_ContentMargins; }

    // Returns the texture reference of each state that holds one.
    void ReturnTextures();

private:
    BrushContent DeriveContent() const;
    void GiveAllStatesTheFirst();

    FixedString<128> m_Name;
    FixedArray<StateInfo, kStateCount> m_States;
    Margins m_StretchMargins;
    Margins m_ContentMargins;
};

} // namespace Corvid

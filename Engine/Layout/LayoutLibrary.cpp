#include "Engine/Layout/LayoutLibrary.h"

#include <algorithm>
#include <utility>

#include "Engine/File/NativePath.h"
#include "Engine/File/SourceFile.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

bool IsPlainWord(std::string_view word) {
    return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

} // namespace

std::shared_ptr<const LibraryLayout> LayoutLibrary::Find(std::string_view typeWord) const {
    const std::scoped_lock lock(m_Mutex);
    const auto found = m_Found.find(typeWord);
    if (found != m_Found.end())
        return found->second;
    return m_Found.emplace(typeWord, Load(typeWord)).first->second;
}

std::shared_ptr<const LibraryLayout> LayoutLibrary::Load(std::string_view typeWord) const {
    if (!IsPlainWord(typeWord))
        return nullptr;
    for (const std::u16string& folder : m_Folders) {
        std::u16string path = folder;
        if (!path.empty() && path.back() != u'/')
            path += u'/';
        path += ToUtf16(typeWord) + u".layout";
        if (GetPathKind(path) != PathKind::File)
            continue;
        auto layout = Read(std::move(path), m_Blocks());
        if (layout->m_Plan == nullptr || layout->m_Plan->GetLayout().GetName() == typeWord)
            return layout;
        auto wrong = std::make_shared<LibraryLayout>();
        wrong->m_Path = layout->m_Path;
        wrong->m_Errors = {{1, 1,
                            "the layout is for '" + layout->m_Plan->GetLayout().GetName() +
                                "', and its file is called " + std::string(typeWord) + ".layout"}};
        return wrong;
    }
    return nullptr;
}

std::shared_ptr<const LibraryLayout> LayoutLibrary::Read(std::u16string path, const LayoutBlocks& blocks) {
    auto layout = std::make_shared<LibraryLayout>();
    layout->m_Path = std::move(path);
    SourceFile source(LayoutBounds::kMostBytes + 2);
    std::string text(LayoutBounds::kMostBytes + 1, '\0');
    if (!source.Open(layout->m_Path)) {
        layout->m_Errors = {{0, 0, "the layout cannot be opened"}};
        return layout;
    }
    text.resize(source.Read(text.data(), text.size()));
    if (source.GetError() == SourceError::Failed) {
        layout->m_Errors = {{0, 0, "the layout cannot be read"}};
        return layout;
    }
    ParsedLayout parsed = ParseLayout(text, blocks);
    layout->m_Errors = std::move(parsed.m_Errors);
    if (parsed.m_Layout)
        layout->m_Plan = std::make_shared<RecordPlan>(std::move(*parsed.m_Layout));
    return layout;
}

} // namespace Corvid

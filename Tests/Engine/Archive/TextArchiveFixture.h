#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Tests/Support/ArchiveFixture.h"

namespace Corvid {

// The reports of an archive over "memory", whole. A failed check goes without its source line, which moves.
inline std::string Failed(std::string_view condition, std::string_view source = "Engine/Archive/TextFileArchive") {
    return "Assertion failed: " + std::string(condition) + " (" + std::string(source) + ")\n";
}

inline std::string Missing(std::string_view label, int lookUps, std::string_view line) {
    return "Text FileArchive missing Label.\n\nFile: memory\nLabel: " + std::string(label) +
           "\nLine Number:" + std::to_string(lookUps) + "\nLine Contents:" + std::string(line) + '\n';
}

inline std::string Unterminated(std::string_view behindQuote, int lookUps, std::string_view line) {
    return "\" not found wrapping data string: " + std::string(behindQuote) +
           "\nFileName: memory\nLine #: " + std::to_string(lookUps) + "\nLine Content: " + std::string(line);
}

inline std::string ShortRead(int wanted, int obtained) {
    return "Failed to Read File 'memory'. desired read bytes = " + std::to_string(wanted) +
           ", actual read bytes = " + std::to_string(obtained) + ".\n";
}

inline constexpr Label kValue = u"Value";

// Reads one value over another.
template <class Value> Value ReadOver(Value value, Archive& archive, void (Archive::*read)(Label, Value&)) {
    (archive.*read)(kValue, value);
    return value;
}

class TextArchiveFixture : public ArchiveFixture {
protected:
    std::string TakeReports() {
        std::string text = m_Reports.Take();
        constexpr std::string_view kSourceLine = ", line ";
        for (std::size_t at = 0; (at = text.find(kSourceLine, at)) != text.npos;) {
            const std::size_t end = text.find_first_not_of("0123456789", at + kSourceLine.size());
            if (end < text.size() && text[end] == ')')
                text.erase(at, end - at);
            else
                at = end;
        }
        return text;
    }

    // `read(TextFileArchive&)` from lines behind a header; returns the reports.
    template <class Step> std::string Read(std::string_view lines, Step read) {
        return ReadFile("TXT\n" + std::string(lines), read);
    }
    template <class Step> std::string ReadFile(std::string file, Step read) {
        auto archive = m_Archives.OpenForReading(File::ReadFromMemory(u"memory", std::move(file)));
        if (archive != nullptr) {
            read(static_cast<TextFileArchive&>(*archive));
            m_Archives.Release(std::move(archive));
        }
        return TakeReports();
    }

    // The same in the bits form.
    template <class Step> std::string ReadBits(std::string_view lines, Step read) {
        auto file = File::ReadFromMemory(u"memory", std::string(lines));
        auto archive = m_Archives.CreateArchive(std::move(file), ArchiveFormat::Text, FloatForm::Bits);
        read(static_cast<TextFileArchive&>(*archive));
        m_Archives.Release(std::move(archive));
        return TakeReports();
    }

    // `write(FileArchive&)` into a text without header.
    template <class Step> std::string Write(FloatForm floatForm, Step write) {
        std::string bytes;
        auto file = File::WriteToMemory(u"memory", bytes);
        auto archive = m_Archives.CreateArchive(std::move(file), ArchiveFormat::Text, floatForm);
        write(*archive);
        m_Archives.Release(std::move(archive));
        return bytes;
    }
};

} // namespace Corvid

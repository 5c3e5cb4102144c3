#pragma once

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Program.h"
#include "Corvid/Terminal/TextOutput.h"

namespace Corvid {

// One run of the program within the test: its status and both outputs.
struct CorvidRun {
    explicit CorvidRun(std::vector<std::string> arguments) {
        Collector output(m_Output);
        Collector errors(m_Errors);
        Console console(output, errors);
        m_Status = RunCorvid(std::move(arguments), console);
    }

    int m_Status = 0;
    std::string m_Output;
    std::string m_Errors;

private:
    class Collector final : public TextOutput {
    public:
        explicit Collector(std::string& text) : m_Text(text) {}
        std::string Write(std::string_view bytes) override {
            m_Text += bytes;
            return {};
        }
        bool HasLostReader() const override { return false; }

    private:
        std::string& m_Text;
    };
};

inline void WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace Corvid

#include "Corvid/Files/FailureLine.h"

#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

std::string FailureLine(std::string_view path, DiagnosticCode code, std::string_view message) {
    std::string line = PrintedPath(path);
    line.append(": error: ").append(message).append(" [").append(WordOf(code)).append("]\n");
    return line;
}

} // namespace Corvid

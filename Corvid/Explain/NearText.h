#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvid {

// Whether someone may have meant `wanted` by `written`: but for case they differ in at most two letters, and in at most
// a third of what was written, rounded up. A text is not near itself.
bool IsNear(std::string_view written, std::string_view wanted);

// The nearest of the candidates, the first of equals; empty: none is near.
class NearestText {
public:
    explicit NearestText(std::string_view written) : m_Written(written) {}

    void Offer(std::string_view candidate);
    const std::string& Get() const { return m_Nearest; }

private:
    std::string_view m_Written;
    std::string m_Nearest;
    std::size_t m_Distance = 0;
};

} // namespace Corvid

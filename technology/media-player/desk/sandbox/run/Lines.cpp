#include "Lines.h"

namespace sandbox
{

std::string Lines::WithoutColours(const std::string& aLine)
{
    if (aLine.find('\033') == std::string::npos) {
        return aLine;
    }
    std::string plain;
    for (size_t index = 0; index < aLine.size(); ++index) {
        if (aLine.compare(index, 2, "\033[") == 0) {
            const size_t end = aLine.find_first_of("mK", index);
            index = end == std::string::npos ? aLine.size() : end;
        } else {
            plain += aLine[index];
        }
    }
    return plain;
}

} // namespace sandbox

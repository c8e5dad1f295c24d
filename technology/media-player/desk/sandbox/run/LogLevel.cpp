#include "LogLevel.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace sandbox
{

namespace
{

const std::pair<const char*, LogLevel> kLevels[] = {{"debug ", LogLevel::Debug},
                                                    {"info ", LogLevel::Info},
                                                    {"warning ", LogLevel::Warning},
                                                    {"critical ", LogLevel::Critical},
                                                    {"fatal ", LogLevel::Fatal}};

bool IsDigit(char aCharacter)
{
    return std::isdigit(static_cast<unsigned char>(aCharacter)) != 0;
}

// Where the ready main's seconds end, as in "     1.215 debug    …"; 0 when the line does not begin so.
size_t SecondsEnd(const std::string& aLine)
{
    size_t index = std::min(aLine.find_first_not_of(' '), aLine.size());
    const size_t begin = index;
    while (index < aLine.size() && (IsDigit(aLine[index]) || aLine[index] == '.')) {
        ++index;
    }
    const bool isTime = index > begin + 4 && aLine[index - 4] == '.';
    return isTime && index < aLine.size() && aLine[index] == ' ' ? index + 1 : 0;
}

} // namespace

LogLevel LevelOf(const std::string& aLine)
{
    const size_t begin = SecondsEnd(aLine);
    for (const auto& [word, level] : kLevels) {
        if (begin > 0 && aLine.compare(begin, std::string(word).size(), word) == 0) {
            return level;
        }
    }
    return LogLevel::Output;
}

} // namespace sandbox

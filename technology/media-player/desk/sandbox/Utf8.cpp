#include "Utf8.h"

namespace sandbox
{

namespace
{

unsigned char ByteAt(std::string_view aText, size_t aIndex)
{
    return aIndex < aText.size() ? static_cast<unsigned char>(aText[aIndex]) : 0;
}

// What its first byte says; 0 when no character begins with it.
size_t AnnouncedLength(unsigned char aFirst)
{
    if (aFirst < 0x80) {
        return 1;
    }
    if (aFirst < 0xc2 || aFirst > 0xf4) {
        return 0;
    }
    return aFirst < 0xe0 ? 2 : aFirst < 0xf0 ? 3 : 4;
}

} // namespace

size_t CharacterLength(std::string_view aText, size_t aIndex)
{
    const size_t length = AnnouncedLength(ByteAt(aText, aIndex));
    for (size_t next = 1; next < length; ++next) {
        if ((ByteAt(aText, aIndex + next) & 0xc0) != 0x80) {
            return 0;
        }
    }
    return length;
}

} // namespace sandbox

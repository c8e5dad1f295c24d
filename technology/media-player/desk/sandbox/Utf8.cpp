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

// Halves of characters, and two codes that are none for good, can be written in the same way.
bool IsCharacter(unsigned long aCode)
{
    return aCode <= 0x10ffff && (aCode < 0xd800 || aCode > 0xdfff) && aCode != 0xfffe && aCode != 0xffff;
}

} // namespace

size_t CharacterLength(std::string_view aText, size_t aIndex)
{
    constexpr unsigned long kLeast[] = {0, 0, 0x80, 0x800, 0x10000}; // what no shorter form can say
    const size_t length = AnnouncedLength(ByteAt(aText, aIndex));
    unsigned long code = ByteAt(aText, aIndex) & (0x7fU >> length);
    for (size_t next = 1; next < length; ++next) {
        const unsigned char byte = ByteAt(aText, aIndex + next);
        if ((byte & 0xc0) != 0x80) {
            return 0;
        }
        code = code << 6 | (byte & 0x3fU);
    }
    return code >= kLeast[length] && IsCharacter(code) ? length : 0;
}

} // namespace sandbox

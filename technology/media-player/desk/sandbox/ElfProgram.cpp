#include "ElfProgram.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

// This program's own header, which the linker names.
extern const ElfW(Ehdr) kOwnHeader __asm__("__ehdr_start") __attribute__((visibility("hidden")));

namespace sandbox
{

ElfProgram::ElfProgram(const std::string& aPath)
    : m_File(open(aPath.c_str(), O_RDONLY | O_CLOEXEC)),
      m_Header(Read<ElfW(Ehdr)>(0)),
      m_IsElf(std::memcmp(m_Header.e_ident, ELFMAG, SELFMAG) == 0)
{
    for (size_t index = 0; IsNative() && index < m_Header.e_phnum; ++index) {
        m_Segments.push_back(Read<ElfW(Phdr)>(m_Header.e_phoff + index * sizeof(ElfW(Phdr))));
    }
}

bool ElfProgram::IsNative() const
{
    return std::memcmp(m_Header.e_ident, kOwnHeader.e_ident, EI_VERSION) == 0 &&
           m_Header.e_machine == kOwnHeader.e_machine;
}

bool ElfProgram::IsDynamic() const
{
    return std::any_of(m_Segments.begin(), m_Segments.end(),
                       [](const ElfW(Phdr) & aSegment) { return aSegment.p_type == PT_INTERP; });
}

std::vector<std::string> ElfProgram::Libraries() const
{
    std::vector<size_t> places;
    size_t names = 0;
    for (const ElfW(Phdr) & segment : m_Segments) {
        const size_t end = segment.p_type == PT_DYNAMIC ? segment.p_offset + segment.p_filesz : 0;
        for (size_t offset = segment.p_offset; offset < end; offset += sizeof(ElfW(Dyn))) {
            const auto entry = Read<ElfW(Dyn)>(offset);
            if (entry.d_tag == DT_NEEDED) {
                places.push_back(entry.d_un.d_val);
            } else if (entry.d_tag == DT_STRTAB) {
                names = OffsetOf(entry.d_un.d_ptr);
            }
        }
    }
    std::vector<std::string> libraries;
    libraries.reserve(places.size());
    std::transform(places.begin(), places.end(), std::back_inserter(libraries),
                   [&](size_t aPlace) { return ReadName(names + aPlace); });
    return libraries;
}

// Zeros where the file ends early.
template <typename Struct>
Struct ElfProgram::Read(size_t aOffset) const
{
    Struct value = {};
    if (pread(m_File.Get(), &value, sizeof value, static_cast<off_t>(aOffset)) !=
        static_cast<ssize_t>(sizeof value)) {
        value = {};
    }
    return value;
}

std::string ElfProgram::ReadName(size_t aOffset) const
{
    const auto text = Read<std::array<char, 64>>(aOffset);
    return {text.data(), strnlen(text.data(), text.size())};
}

size_t ElfProgram::OffsetOf(size_t aAddress) const
{
    for (const ElfW(Phdr) & segment : m_Segments) {
        if (segment.p_type == PT_LOAD && aAddress >= segment.p_vaddr &&
            aAddress < segment.p_vaddr + segment.p_filesz) {
            return aAddress - segment.p_vaddr + segment.p_offset;
        }
    }
    return 0;
}

} // namespace sandbox

/// A look into a program file, as far as the dynamic loader cares.
#pragma once

#include "Posix.h"

#include <link.h>

#include <string>
#include <vector>

namespace sandbox
{

class ElfProgram
{
public:
    /// A file that can't be read is no ELF file.
    explicit ElfProgram(const std::string& aPath);

    bool IsElf() const { return m_IsElf; }

    /// Of this program's own architecture. What follows holds for such files only.
    bool IsNative() const;

    /// Started through a dynamic loader.
    bool IsDynamic() const;

    /// The libraries that it names itself.
    std::vector<std::string> Libraries() const;

private:
    template <typename Struct>
    Struct Read(size_t aOffset) const;
    std::string ReadName(size_t aOffset) const;

    /// Where in the file an address of the running program comes from.
    size_t OffsetOf(size_t aAddress) const;

    UniqueFd m_File;
    ElfW(Ehdr) m_Header;
    bool m_IsElf;
    std::vector<ElfW(Phdr)> m_Segments;
};

} // namespace sandbox

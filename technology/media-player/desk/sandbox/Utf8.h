/// Programs print anything; what is written down of it has to be text.
#pragma once

#include <cstddef>
#include <string_view>

namespace sandbox
{

/// The length of the UTF-8 character at `aIndex`, 0 when there is none.
size_t CharacterLength(std::string_view aText, size_t aIndex);

} // namespace sandbox

#include "TimelinePage.h"

#include <string_view>

namespace sandbox
{

extern const char kTimelinePage[];

namespace
{

constexpr std::string_view kTraceMark = "@TRACE@";

// A page's script element ends at "</script" and has other rules after "<!--", also inside a JSON string.
// JSON has "<" in strings only, where it may be written as an escape.
void AppendForScript(std::string& aPage, const std::string& aTrace)
{
    for (const char character : aTrace) {
        if (character == '<') {
            aPage += "\\u003c";
        } else {
            aPage += character;
        }
    }
}

} // namespace

std::string TimelinePage(const std::string& aTrace)
{
    const std::string_view page(kTimelinePage);
    const size_t mark = page.find(kTraceMark);
    std::string whole;
    whole.reserve(page.size() + aTrace.size());
    whole += page.substr(0, mark);
    AppendForScript(whole, aTrace);
    return whole += page.substr(mark + kTraceMark.size());
}

} // namespace sandbox

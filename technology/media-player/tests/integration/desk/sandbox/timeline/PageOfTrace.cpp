// Makes the page of a trace, for the tests that look at it in a browser: mpl_timeline_page_subject <trace
// >page
#include "TimelinePage.h"

#include <iostream>
#include <iterator>
#include <string>

int main()
{
    const std::string trace(std::istreambuf_iterator<char>(std::cin), {});
    std::cout << sandbox::TimelinePage(trace) << std::flush;
    return std::cout ? 0 : 1;
}

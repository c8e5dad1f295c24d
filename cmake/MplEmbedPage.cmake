# Joins a page's parts into one and makes it a C++ source, so that a program carries it along.
#   cmake -DPAGE=page.html "-DSTYLES=a.css;b.css" "-DSCRIPTS=a.js;b.js" -DNAME=kPage -DOUTPUT=page.cpp -P MplEmbedPage.cmake
# In the page @STYLE@ and @SCRIPT@ stand for the parts. It becomes the constant sandbox::<NAME>.
cmake_minimum_required(VERSION 3.20)
file(READ ${PAGE} page)
foreach(part STYLE SCRIPT)
    set(joined "")
    foreach(file IN LISTS ${part}S)
        file(READ ${file} text)
        string(APPEND joined "${text}\n")
    endforeach()
    string(REPLACE "@${part}@" "${joined}" page "${page}")
endforeach()
# The text is longer than what every compiler has to take; those in use take it.
file(WRITE ${OUTPUT} "#ifdef __clang__
#pragma clang diagnostic ignored \"-Woverlength-strings\"
#endif
namespace sandbox
{
extern const char ${NAME}[];
const char ${NAME}[] = R\"__(${page})__\";
} // namespace sandbox
")

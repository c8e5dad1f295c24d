# Joins a page's parts into one and makes it a C++ source, so that a program carries it along.
#   cmake -DPAGE=page.html -DSTYLE=page.css "-DSCRIPTS=a.js;b.js" -DNAME=kPage -DOUTPUT=page.cpp -P MplEmbedPage.cmake
# In the page @STYLE@ and @SCRIPT@ stand for the parts. It becomes the constant sandbox::<NAME>.
cmake_minimum_required(VERSION 3.20)
file(READ ${PAGE} page)
file(READ ${STYLE} style)
set(script "")
foreach(file IN LISTS SCRIPTS)
    file(READ ${file} text)
    string(APPEND script "${text}\n")
endforeach()
string(REPLACE "@STYLE@" "${style}" page "${page}")
string(REPLACE "@SCRIPT@" "${script}" page "${page}")
file(WRITE ${OUTPUT} "namespace sandbox
{
extern const char ${NAME}[];
const char ${NAME}[] = R\"__(${page})__\";
} // namespace sandbox
")

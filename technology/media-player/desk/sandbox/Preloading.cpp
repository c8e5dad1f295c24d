#include "Preloading.h"

#include "ElfProgram.h"
#include "ProgramPath.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <fstream>

namespace sandbox
{

namespace
{

// A script's interpreter may be a script; the kernel follows no further.
constexpr int kDeepestScript = 4;

// Runtimes that insist on being the first library.
constexpr const char* kSanitizers[] = {"libasan.", "libhwasan.", "liblsan.", "libtsan.", "libclang_rt."};

// "#!interpreter argument"; empty when the file is no script.
std::string InterpreterOf(const std::string& aFile)
{
    std::ifstream text(aFile);
    std::string mark(2, '\0');
    text.read(mark.data(), 2);
    std::string interpreter;
    return mark == "#!" && text >> interpreter ? interpreter : std::string();
}

bool HasPrivileges(const std::string& aFile)
{
    struct stat status = {};
    return (stat(aFile.c_str(), &status) == 0 && (status.st_mode & (S_ISUID | S_ISGID)) != 0) ||
           getxattr(aFile.c_str(), "security.capability", nullptr, 0) > 0;
}

std::string SanitizerOf(const ElfProgram& aProgram)
{
    for (const std::string& library : aProgram.Libraries()) {
        for (const char* sanitizer : kSanitizers) {
            if (library.rfind(sanitizer, 0) == 0) {
                return library;
            }
        }
    }
    return {};
}

std::string ObstacleIn(const ElfProgram& aProgram)
{
    if (!aProgram.IsElf()) {
        return {};
    }
    if (!aProgram.IsNative()) {
        return "is made for another architecture";
    }
    if (!aProgram.IsDynamic()) {
        return "is statically linked";
    }
    const std::string sanitizer = SanitizerOf(aProgram);
    return sanitizer.empty() ? std::string()
                             : "is built with a sanitizer (" + sanitizer + "), which must be loaded first";
}

} // namespace

std::string ObstacleToPreloading(const std::string& aProgram)
{
    std::string file = FindProgram(aProgram);
    for (int depth = 0; depth < kDeepestScript; ++depth) {
        const std::string interpreter = InterpreterOf(file);
        if (interpreter.empty()) {
            break;
        }
        file = interpreter;
    }
    return HasPrivileges(file) ? "has privileges of its own (set-user-id, set-group-id or capabilities)"
                               : ObstacleIn(ElfProgram(file));
}

} // namespace sandbox

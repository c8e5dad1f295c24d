#include "ProgramPath.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

namespace sandbox
{

namespace
{

bool IsProgram(const std::string& aFile)
{
    struct stat status = {};
    return access(aFile.c_str(), X_OK) == 0 && stat(aFile.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::string FindProgram(const std::string& aName)
{
    if (aName.find('/') != std::string::npos) {
        return aName;
    }
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/bin:/usr/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string file = (folder.empty() ? "." : folder) + "/" + aName;
        if (IsProgram(file)) {
            return file;
        }
    }
    return {};
}

} // namespace sandbox

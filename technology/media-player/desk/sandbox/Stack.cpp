#include "Stack.h"

#include "World.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

// Beside this program: first as built, then as installed. Whichever Qt it was built with, it is the same
// stack.
constexpr const char* kPlaces[] = {"../stack", "../lib/mpl-test-support/stack",
                                   "../lib/mpl-test-support-qt6/stack"};

} // namespace

std::string FindStackFolder()
{
    if (const char* named = std::getenv("MPL_STACK"); named != nullptr && *named != '\0') {
        return fs::absolute(named).lexically_normal().string();
    }
    for (const char* place : kPlaces) {
        const fs::path folder = (fs::path(OwnExecutable()).parent_path() / place).lexically_normal();
        std::error_code error;
        if (fs::is_directory(folder, error)) {
            return folder.string();
        }
    }
    return {};
}

std::string ProblemWithStack(const std::string& aFolder)
{
    std::error_code error;
    if (aFolder.empty()) {
        return "no stack was found beside this program: install the package "
               "mpl-test-support-simulated-stack, or name a "
               "stack with --stack DIR or MPL_STACK";
    }
    if (!fs::is_directory(aFolder, error)) {
        return "the stack folder " + aFolder +
               " does not exist: build the simulated stack, or name another with --stack DIR";
    }
    if (access((aFolder + "/bin/media_manager").c_str(), X_OK) != 0) {
        return "the stack folder " + aFolder +
               " has no programs (bin/media_manager is missing or can't be run): build or install the stack "
               "there, or name another with --stack DIR";
    }
    return {};
}

} // namespace sandbox

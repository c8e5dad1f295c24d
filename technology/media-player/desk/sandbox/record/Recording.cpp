#include "Recording.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace sandbox
{

namespace
{

constexpr const char* kFacts = "facts";
constexpr const char* kTestBus = "test-bus.pcap";
constexpr const char* kSystemBus = "system-bus.pcap";

UniqueFd OpenFile(const std::string& aFolder, const char* aName, int aFlags)
{
    if (!aFolder.empty()) {
        return UniqueFd(open((aFolder + "/" + aName).c_str(), aFlags | O_CLOEXEC, 0644));
    }
    UniqueFd memory(memfd_create(aName, MFD_CLOEXEC));
    fcntl(memory.Get(), F_SETFL, O_APPEND);
    return memory;
}

} // namespace

bool Recording::Make(const std::string& aFolder)
{
    constexpr int kFlags = O_RDWR | O_CREAT | O_TRUNC | O_APPEND;
    if (!aFolder.empty() && mkdir(aFolder.c_str(), 0755) != 0 && errno != EEXIST) {
        return false;
    }
    m_Folder = aFolder;
    m_Facts = OpenFile(aFolder, kFacts, kFlags);
    m_TestBus = OpenFile(aFolder, kTestBus, kFlags);
    m_SystemBus = OpenFile(aFolder, kSystemBus, kFlags);
    return m_Facts.IsValid() && m_TestBus.IsValid() && m_SystemBus.IsValid();
}

bool Recording::Open(const std::string& aFolder)
{
    m_Folder = aFolder;
    m_Facts = OpenFile(aFolder, kFacts, O_RDONLY);
    m_TestBus = OpenFile(aFolder, kTestBus, O_RDONLY);
    m_SystemBus = OpenFile(aFolder, kSystemBus, O_RDONLY);
    return m_Facts.IsValid();
}

void Recording::Remove() const
{
    if (m_Folder.empty()) {
        return;
    }
    std::error_code error;
    for (const char* name : {kFacts, kTestBus, kSystemBus}) {
        std::filesystem::remove(m_Folder + "/" + name, error);
    }
    std::filesystem::remove(m_Folder, error);
}

std::string Recording::Content(int aFile)
{
    std::string content;
    char buffer[65536];
    for (ssize_t count = 0;
         (count = pread(aFile, buffer, sizeof buffer, static_cast<off_t>(content.size()))) > 0;) {
        content.append(buffer, static_cast<size_t>(count));
    }
    return content;
}

} // namespace sandbox

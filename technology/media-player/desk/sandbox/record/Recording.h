/// Where all is kept that is seen of a run, until it is told.
#pragma once

#include "../Posix.h"
#include "Fact.h"

#include <string>
#include <vector>

namespace sandbox
{

/// Of each stream, in a recording that is in memory.
constexpr size_t kMostOutputInMemory = 64UL * 1024 * 1024;

/// Three files that are only appended to: the facts, and the traffic of both buses as pcap.
class Recording
{
public:
    /// In a folder that is made, or in memory when that is empty. False, with errno, when it can't be.
    bool Make(const std::string& aFolder);

    /// One that is there already, to be read. False, with errno, when it is none.
    bool Open(const std::string& aFolder);

    /// The folder is no longer needed.
    void Remove() const;

    FactLog Facts() const { return FactLog(m_Facts.Get()); }
    int TestBus() const { return m_TestBus.Get(); }
    int SystemBus() const { return m_SystemBus.Get(); }

    std::vector<Fact> ReadFacts() const { return ParseFacts(Content(m_Facts.Get())); }

    /// All that is in the file of one of these descriptors.
    static std::string Content(int aFile);

private:
    std::string m_Folder;
    UniqueFd m_Facts;
    UniqueFd m_TestBus;
    UniqueFd m_SystemBus;
};

} // namespace sandbox

/// Messages of a bus as pcap, which Wireshark and Bustle read: writing them.
#pragma once

#include "clock/Clock.h"

#include <string>

struct DBusMessage;

namespace sandbox
{

/// Writes to a descriptor that is open for appending. The times are those of the sandbox's clock, as in what
/// its programs print. Where that is not the machine's, the first message says so: a signal Clock from
/// com.talvex.MplSandbox.Recorder, which never was on the bus, with the speed and a sentence.
class PcapFile
{
public:
    PcapFile(int aFd, const Clock& aClock) : m_Fd(aFd), m_Clock(aClock) {}

    /// Without a descriptor nothing is written.
    bool IsThere() const { return m_Fd >= 0; }

    void Begin() const;
    void Write(DBusMessage* aMessage) const;

    /// A signal of the recorder's own with that text, which never was on the bus.
    void Tell(const char* aSignal, const std::string& aText) const;

private:
    void WriteOwn(DBusMessage* aMessage) const;
    void WriteClock() const;

    int m_Fd;
    Clock m_Clock;
};

} // namespace sandbox

#include "Relay.h"

#include "PseudoTerminal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace sandbox
{

bool AreSameFile(int aOne, int aOther)
{
    struct stat one = {};
    struct stat other = {};
    return fstat(aOne, &one) == 0 && fstat(aOther, &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

Relay::Relay(int aTarget, Sink aSink, Pipe aPassage)
    : m_Passage(std::move(aPassage)),
      m_IsTerminal(isatty(m_Passage.read.Get()) != 0),
      m_Target(aTarget),
      m_Sink(std::move(aSink))
{
    fcntl(m_Passage.read.Get(), F_SETFL, O_NONBLOCK);
}

bool Relay::PassOn()
{
    char buffer[16384];
    const ssize_t count = read(m_Passage.read.Get(), buffer, sizeof buffer);
    if (count <= 0) {
        // A terminal that nobody writes to any more ends with an error.
        if (count == 0 || errno == EIO) {
            m_Passage.read.Close();
        }
        return count < 0 && errno == EINTR;
    }
    const std::string_view piece(buffer, static_cast<size_t>(count));
    m_Sink(piece);
    if (m_IsTerminal) {
        TakeSize(m_Target, m_Passage.read.Get());
    }
    if (!WriteAll(m_Target, piece)) {
        m_Passage.read.Close();
    }
    return true;
}

void Relay::Drain()
{
    while (m_Passage.read.IsValid() && PassOn()) {
    }
}

} // namespace sandbox

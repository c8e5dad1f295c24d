#include "Relay.h"

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

Relay::Relay(int aTarget, Sink aSink) : m_Pipe(MakePipe()), m_Target(aTarget), m_Sink(std::move(aSink))
{
    fcntl(m_Pipe.read.Get(), F_SETFL, O_NONBLOCK);
}

bool Relay::PassOn()
{
    char buffer[16384];
    const ssize_t count = read(m_Pipe.read.Get(), buffer, sizeof buffer);
    if (count <= 0) {
        if (count == 0) {
            m_Pipe.read.Close();
        }
        return count < 0 && errno == EINTR;
    }
    const std::string_view piece(buffer, static_cast<size_t>(count));
    m_Sink(piece);
    if (!WriteAll(m_Target, piece)) {
        m_Pipe.read.Close();
    }
    return true;
}

void Relay::Drain()
{
    while (m_Pipe.read.IsValid() && PassOn()) {
    }
}

} // namespace sandbox

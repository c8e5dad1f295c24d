/// A disk that is full, for this program only: while it lives no file grows beyond the size.
#pragma once

#include <sys/resource.h>

#include <csignal>

class FullDisk
{
public:
    explicit FullDisk(rlim_t aSize)
    {
        getrlimit(RLIMIT_FSIZE, &m_Before);
        m_Handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{aSize, m_Before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_Before);
        std::signal(SIGXFSZ, m_Handler);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_Before{};
    void (*m_Handler)(int) = nullptr;
};

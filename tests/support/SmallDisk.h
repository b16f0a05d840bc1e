#pragma once

#include <csignal>

#include <sys/resource.h>

namespace quorvin::testing {

/// While this lives, no file of this program can grow past `limit` bytes, as on a full disk.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t limit) : m_handler(::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{limit, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

} // namespace quorvin::testing

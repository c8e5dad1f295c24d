// What libdbus asks libsystemd for: the sockets that systemd hands to a daemon. This program is none, and
// gets none; without these, libsystemd and what it needs would have to be loaded at every start.
#include <systemd/sd-daemon.h>

int sd_listen_fds(int /*unset_environment*/)
{
    return 0;
}

int sd_is_socket(int /*fd*/, int /*family*/, int /*type*/, int /*listening*/)
{
    return 0;
}

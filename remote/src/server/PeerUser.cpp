#include "server/PeerUser.h"

#include <sys/socket.h>
#include <sys/types.h>
#include <unistd.h>

namespace zephyr::console::remote {

bool isOwnUser(qintptr socket)
{
    const int descriptor = static_cast<int>(socket);
#ifdef SO_PEERCRED
    struct ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
#else
    uid_t user = 0;
    gid_t group = 0;
    return getpeereid(descriptor, &user, &group) == 0 && user == geteuid();
#endif
}

} // namespace zephyr::console::remote

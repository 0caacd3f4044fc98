#include "endpoint.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include "board/util.h"
#include "settings.h"

namespace board
{
namespace
{

// Binds a socket of `mode`, and replaces whatever had its name. The caller holds the lock.
bool bind_socket(const std::string &directory, uint32_t module, const char *kind, int type, uint32_t mode,
                 Descriptor &bound, std::string &path)
{
    sockaddr_un address;
    if (!socket_address(directory, module, kind, address)) {
        userlog_err(__func__, __LINE__, "%s is too long a name for a folder of sockets", directory.c_str());
        return false;
    }
    Descriptor socket(::socket(AF_UNIX, type | SOCK_CLOEXEC, 0));
    if (socket && (!unlink(address.sun_path) || errno == ENOENT) &&
        // The mode is set before bind, so that the socket is never open to more users than it should be. It is set
        // again after bind, because of the umask.
        !fchmod(socket.get(), mode) && !bind(socket.get(), reinterpret_cast<sockaddr *>(&address), sizeof address)) {
        path = address.sun_path;
        bound = std::move(socket);
        if (!chmod(address.sun_path, mode)) return true;
    }
    userlog_err(__func__, __LINE__, "no socket %s: %s", address.sun_path, std::strerror(errno));
    return false;
}

} // namespace

// The lock lives as long as the process that holds it, however that process ends. The holder removes the file when it
// ends. So a lock does not count when its file no longer has that name.
bool Endpoint::claim()
{
    for (;;) {
        Descriptor file(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        struct stat locked, named;
        if (!file) {
            userlog_err(__func__, __LINE__, "no lock %s: %s", lock_path.c_str(), std::strerror(errno));
            return false;
        }
        if (flock(file.get(), LOCK_EX | LOCK_NB)) {
            userlog_err(__func__, __LINE__, "%s is held: another live service serves this module here",
                        lock_path.c_str());
            return false;
        }
        if (fstat(file.get(), &locked) || stat(lock_path.c_str(), &named)) continue;
        if (locked.st_dev != named.st_dev || locked.st_ino != named.st_ino) continue;
        fchmod(file.get(), 0600); // whatever the umask is
        lock = std::move(file);
        return true;
    }
}

std::unique_ptr<Endpoint> Endpoint::open(const std::string &directory, uint32_t module, uint32_t mode)
{
    if (mkdir(directory.c_str(), 0755) && errno != EEXIST) {
        userlog_err(__func__, __LINE__, "no folder %s: %s", directory.c_str(), std::strerror(errno));
        return nullptr;
    }
    if (!directory_is_safe(directory)) {
        userlog_err(__func__, __LINE__, "%s is another user's; not used", directory.c_str());
        return nullptr;
    }
    std::unique_ptr<Endpoint> endpoint(new Endpoint);
    endpoint->lock_path = directory + '/' + std::to_string(module) + ".lock";
    if (!endpoint->claim() ||
        !bind_socket(directory, module, "seq", SOCK_SEQPACKET, mode, endpoint->seq, endpoint->seq_path) ||
        !bind_socket(directory, module, "dgram", SOCK_DGRAM, mode, endpoint->dgram, endpoint->dgram_path))
        return nullptr;
    const int on = 1;
    if (setsockopt(endpoint->dgram.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on) ||
        listen(endpoint->seq.get(), SOMAXCONN)) {
        userlog_err(__func__, __LINE__, "cannot listen in %s: %s", directory.c_str(), std::strerror(errno));
        return nullptr;
    }
    return endpoint;
}

Endpoint::~Endpoint()
{
    for (const std::string *path : {&seq_path, &dgram_path})
        if (!path->empty()) unlink(path->c_str());
    if (lock) unlink(lock_path.c_str());
}

} // namespace board

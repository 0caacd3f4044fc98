#include "endpoint.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

#include "board/util.h"
#include "closer.h"
#include "packet.h"
#include "settings.h"

namespace board
{
namespace
{

constexpr int first_given = 3, most_given = 64;

// Returns why the folder cannot be used for sockets, or null. Whoever may write in it could put sockets of his own in
// the place of these.
const char *objection_to(int folder)
{
    struct stat found;
    if (fstat(folder, &found)) return std::strerror(errno);
    if (found.st_uid != geteuid() && found.st_uid != 0) return "it is another user's";
    const bool others_write = found.st_mode & (S_IWGRP | S_IWOTH);
    if (others_write && !(found.st_mode & S_ISVTX))
        return "others may replace what is in it; take their write permission";
    return nullptr;
}

// Returns how many sockets the service manager gave this process. They are the descriptors from first_given on.
int given_sockets()
{
    const char *const process = getenv("LISTEN_PID"), *const count = getenv("LISTEN_FDS");
    if (!process || !count || std::to_string(getpid()) != process) return 0;
    return std::clamp(atoi(count), 0, most_given);
}

bool has_type_and_address(int socket, int type, const sockaddr_un &address)
{
    int found = 0;
    socklen_t size = sizeof found;
    if (getsockopt(socket, SOL_SOCKET, SO_TYPE, &found, &size) || found != type) return false;
    sockaddr_un bound{};
    size = sizeof bound;
    return !getsockname(socket, reinterpret_cast<sockaddr *>(&bound), &size) && bound.sun_family == AF_UNIX &&
           std::strncmp(bound.sun_path, address.sun_path, sizeof bound.sun_path) == 0;
}

} // namespace

bool Endpoint::note(Own &own) const
{
    struct stat found;
    if (fstatat(folder.get(), own.name.c_str(), &found, AT_SYMLINK_NOFOLLOW)) return false;
    own.device = found.st_dev;
    own.inode = found.st_ino;
    return true;
}

void Endpoint::remove(const Own &own) const
{
    Own named{own.name};
    if (own.inode != 0 && note(named) && named.device == own.device && named.inode == own.inode)
        unlinkat(folder.get(), own.name.c_str(), 0);
}

bool Endpoint::inherit_socket(const sockaddr_un &address, int type, Descriptor &bound)
{
    for (int socket = first_given; socket < first_given + given_sockets(); ++socket) {
        if (!has_type_and_address(socket, type, address)) continue;
        bound = Descriptor(fcntl(socket, F_DUPFD_CLOEXEC, first_given));
        if (!stop_signal) stop_signal = Descriptor(eventfd(0, EFD_CLOEXEC));
        fcntl(socket, F_SETFD, FD_CLOEXEC);
        return bound && stop_signal;
    }
    return false;
}

void Endpoint::stop()
{
    const uint64_t one = 1;
    if (stop_signal) {
        static_cast<void>(!write(stop_signal.get(), &one, sizeof one)); // The first one is always taken.
        return;
    }
    shutdown(seq.get(), SHUT_RDWR);
    shutdown(dgram.get(), SHUT_RDWR);
}

// Binds a socket of `mode`, and replaces whatever had its name. The caller holds the lock.
bool Endpoint::bind_socket(const std::string &path, int type, uint32_t mode, Descriptor &bound, Own &own)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (inherit_socket(address, type, bound)) return true;
    own.name = path.substr(path.rfind('/') + 1);
    Descriptor socket(::socket(AF_UNIX, type | SOCK_CLOEXEC, 0));
    if (socket && (!unlinkat(folder.get(), own.name.c_str(), 0) || errno == ENOENT) &&
        // The mode is set before bind, so that the socket is never open to more users than it should be. It is set
        // again after bind, because of the umask.
        !fchmod(socket.get(), mode) && !bind(socket.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) &&
        note(own)) {
        bound = std::move(socket);
        if (!fchmodat(folder.get(), own.name.c_str(), mode, 0)) return true;
    }
    userlog_err(__func__, __LINE__, "no socket %s: %s", path.c_str(), std::strerror(errno));
    return false;
}

// The lock lives as long as the process that holds it, however that process ends. The holder removes the file when it
// ends. So a lock does not count when its file no longer has that name.
bool Endpoint::claim()
{
    const char *const name = lock_file.name.c_str();
    for (;;) {
        Descriptor file(openat(folder.get(), name, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        struct stat locked;
        if (!file) {
            userlog_err(__func__, __LINE__, "no lock %s: %s", name, std::strerror(errno));
            return false;
        }
        if (flock(file.get(), LOCK_EX | LOCK_NB)) {
            userlog_err(__func__, __LINE__, "%s is held: another live service serves this module here", name);
            return false;
        }
        if (fstat(file.get(), &locked) || !note(lock_file)) continue;
        if (locked.st_dev != lock_file.device || locked.st_ino != lock_file.inode) continue;
        fchmod(file.get(), 0600); // whatever the umask is
        lock = std::move(file);
        return true;
    }
}

std::unique_ptr<Endpoint> Endpoint::open(const std::string &directory, uint32_t module, uint32_t mode)
{
    sockaddr_un longest;
    if (!socket_address(directory, module, "dgram", longest)) {
        userlog_err(__func__, __LINE__, "%s is too long a name for a folder of sockets", directory.c_str());
        return nullptr;
    }
    if (mkdir(directory.c_str(), 0755) && errno != EEXIST) {
        userlog_err(__func__, __LINE__, "no folder %s: %s", directory.c_str(), std::strerror(errno));
        return nullptr;
    }
    if (!directory_is_safe(directory)) {
        userlog_err(__func__, __LINE__, "%s is another user's; not used", directory.c_str());
        return nullptr;
    }
    std::unique_ptr<Endpoint> endpoint(new Endpoint);
    endpoint->folder = Descriptor(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const char *const objection = endpoint->folder ? objection_to(endpoint->folder.get()) : std::strerror(errno);
    if (objection) {
        userlog_err(__func__, __LINE__, "the folder %s cannot be used: %s", directory.c_str(), objection);
        return nullptr;
    }
    const std::string path = directory + '/' + std::to_string(module);
    endpoint->lock_file.name = std::to_string(module) + ".lock";
    if (!endpoint->claim() ||
        !endpoint->bind_socket(path + ".seq", SOCK_SEQPACKET, mode, endpoint->seq, endpoint->seq_file) ||
        !endpoint->bind_socket(path + ".dgram", SOCK_DGRAM, mode, endpoint->dgram, endpoint->dgram_file))
        return nullptr;
    const int on = 1, off = 0;
    // A connection inherits this from the socket that listens.
    endpoint->refuses_descriptors = !setsockopt(endpoint->seq.get(), SOL_SOCKET, SO_PASSRIGHTS, &off, sizeof off);
    if (setsockopt(endpoint->dgram.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on) ||
        listen(endpoint->seq.get(), SOMAXCONN)) {
        userlog_err(__func__, __LINE__, "cannot listen in %s: %s", directory.c_str(), std::strerror(errno));
        return nullptr;
    }
    return endpoint;
}

Endpoint::~Endpoint()
{
    remove(seq_file);
    remove(dgram_file);
    if (lock) remove(lock_file);
    if (stop_signal) return; // what waits in the sockets is for the next service
    hang_up(std::move(seq));
    hang_up(std::move(dgram));
}

} // namespace board

#include "reach/pipe.h"

#include <array>
#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

namespace ponctl
{
namespace
{

using Head = std::array<uint32_t, 4>; // kind, number, milliseconds, length of the text

bool write_all(int socket, const void *bytes, size_t length)
{
    const auto *at = static_cast<const char *>(bytes);
    while (length > 0) {
        const ssize_t written = send(socket, at, length, MSG_NOSIGNAL);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        at += written;
        length -= static_cast<size_t>(written);
    }
    return true;
}

bool read_all(int socket, void *bytes, size_t length)
{
    auto *at = static_cast<char *>(bytes);
    while (length > 0) {
        const ssize_t taken = recv(socket, at, length, 0);
        if (taken < 0 && errno == EINTR) continue;
        if (taken <= 0) return false;
        at += taken;
        length -= static_cast<size_t>(taken);
    }
    return true;
}

} // namespace

bool say(int socket, const Saying &saying)
{
    const Head head{static_cast<uint32_t>(saying.kind), saying.number, saying.milliseconds,
                    static_cast<uint32_t>(saying.text.size())};
    return write_all(socket, head.data(), sizeof head) && write_all(socket, saying.text.data(), saying.text.size());
}

std::optional<Saying> listen_to(int socket)
{
    Head head;
    if (!read_all(socket, head.data(), sizeof head)) return std::nullopt;
    Saying saying{static_cast<Said>(head[0]), head[1], head[2], std::string(head[3], '\0')};
    if (!read_all(socket, saying.text.data(), saying.text.size())) return std::nullopt;
    return saying;
}

} // namespace ponctl

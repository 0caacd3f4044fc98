#include "packet.h"

#include <cstring>

#include "closer.h"

namespace board
{

ssize_t send_packet(int socket, const void *packet, size_t size, int descriptor)
{
    constexpr int flags = MSG_DONTWAIT | MSG_NOSIGNAL;
    if (descriptor < 0) return send(socket, packet, size, flags);

    iovec part{const_cast<void *>(packet), size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof descriptor)] = {};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr *const passed = CMSG_FIRSTHDR(&message);
    passed->cmsg_level = SOL_SOCKET;
    passed->cmsg_type = SCM_RIGHTS;
    passed->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(passed), &descriptor, sizeof descriptor);
    return sendmsg(socket, &message, flags);
}

ssize_t receive_packet(int socket, void *packet, size_t size, int flags, std::vector<Descriptor> &passed, ucred *sender)
{
    // The kernel closes what finds no room, in the thread that receives, and that may take as long as the peer likes.
    constexpr size_t most_descriptors = 253; // of a packet
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(ucred)) + CMSG_SPACE(most_descriptors * sizeof(int))];
    iovec part{packet, size};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t received = recvmsg(socket, &message, flags | MSG_TRUNC | MSG_CMSG_CLOEXEC);
    if (received < 0) return received;
    for (cmsghdr *each = CMSG_FIRSTHDR(&message); each; each = CMSG_NXTHDR(&message, each)) {
        if (each->cmsg_level != SOL_SOCKET) continue;
        if (each->cmsg_type == SCM_CREDENTIALS && sender) std::memcpy(sender, CMSG_DATA(each), sizeof *sender);
        if (each->cmsg_type != SCM_RIGHTS) continue;
        for (size_t at = 0; at + sizeof(int) <= each->cmsg_len - CMSG_LEN(0); at += sizeof(int)) {
            int descriptor;
            std::memcpy(&descriptor, CMSG_DATA(each) + at, sizeof descriptor);
            passed.emplace_back(descriptor);
        }
    }
    return received;
}

Descriptor take_first(std::vector<Descriptor> passed)
{
    if (passed.empty()) return {};
    Descriptor first = std::move(passed.front());
    passed.erase(passed.begin());
    close_passed(std::move(passed));
    return first;
}

bool has_option(int socket, int option, int wanted)
{
    int value = 0;
    socklen_t length = sizeof value;
    return !getsockopt(socket, SOL_SOCKET, option, &value, &length) && value == wanted;
}

bool is_way_back(const Descriptor &passed)
{
    return passed && has_option(passed.get(), SO_DOMAIN, AF_UNIX) &&
           has_option(passed.get(), SO_TYPE, SOCK_SEQPACKET) && has_option(passed.get(), SO_ACCEPTCONN, 0);
}

} // namespace board

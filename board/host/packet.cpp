#include "packet.h"

#include <cstring>

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

Descriptor passed_descriptor(msghdr &message)
{
    Descriptor first;
    for (cmsghdr *part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) continue;
        for (size_t at = 0; at + sizeof(int) <= part->cmsg_len - CMSG_LEN(0); at += sizeof(int)) {
            int descriptor;
            std::memcpy(&descriptor, CMSG_DATA(part) + at, sizeof descriptor);
            Descriptor owned(descriptor);
            if (!first) first = std::move(owned);
        }
    }
    return first;
}

} // namespace board

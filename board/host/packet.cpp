#include "packet.h"

#include <cstring>

#include "closer.h"

namespace board
{
namespace
{

bool has_option(int socket, int option, int wanted)
{
    int value = 0;
    socklen_t length = sizeof value;
    return !getsockopt(socket, SOL_SOCKET, option, &value, &length) && value == wanted;
}

} // namespace

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
            if (first)
                close_passed(std::move(owned));
            else
                first = std::move(owned);
        }
    }
    return first;
}

bool is_way_back(const Descriptor &passed)
{
    return passed && has_option(passed.get(), SO_DOMAIN, AF_UNIX) && has_option(passed.get(), SO_TYPE, SOCK_SEQPACKET) &&
           has_option(passed.get(), SO_ACCEPTCONN, 0);
}

} // namespace board

#include "answering.h"

#include <cerrno>
#include <cstring>
#include <exception>

#include <sys/socket.h>

#include "board/util.h"

namespace board
{

Head refusal_of(Refusal reason)
{
    return {.kind = Kind::refusal, .detail = static_cast<uint8_t>(reason)};
}

void Complaints::log(const ucred &peer, const char *what, const char *why)
{
    constexpr unsigned lines_a_second = 10;
    const std::lock_guard lock(mutex);
    const auto now = std::chrono::steady_clock::now();
    if (now - second >= std::chrono::seconds(1)) {
        if (left_out) userlog_err(__func__, __LINE__, "%u more complaints about peers left out", left_out);
        second = now;
        logged = left_out = 0;
    }
    if (logged == lines_a_second) {
        ++left_out;
        return;
    }
    ++logged;
    userlog_err(__func__, __LINE__, "%s of process %d, user %u: %s", what, static_cast<int>(peer.pid),
                static_cast<unsigned>(peer.uid), why);
}

bool Answering::handle(const RequestFrame &frame, size_t received, bool datagram, const ucred &peer,
                       board_answer &answer, Head &refusal)
{
    const Refusal reason = check_request(frame, received, config.module, datagram);
    if (reason != Refusal::none) {
        complaints.log(peer, "refused a packet", text_of(reason));
        refusal = refusal_of(reason);
        return false;
    }
    const RequestHeader &header = frame.header;
    answer.frame.header = {.head = {.kind = Kind::answer, .detail = header.head.detail},
                           .module = header.module,
                           .msg_type = header.msg_type,
                           .sequence = header.sequence,
                           .length = 0,
                           .ipc_result = IPC_OK,
                           .status = 0,
                           .result = {}};
    const board_request request{.call = static_cast<board_call>(header.head.detail),
                                .msg_type = header.msg_type,
                                .data = frame.data,
                                .length = header.length,
                                .allowed = header.allowed,
                                .pid = peer.pid,
                                .uid = peer.uid,
                                .gid = peer.gid};
    const std::lock_guard lock(one_at_a_time);
    try {
        const char *denied = config.authorize ? config.authorize(config.context, &request) : nullptr;
        if (denied) {
            complaints.log(peer, "refused a request", denied);
            board_answer_fail(&answer, IPC_ERR_REFUSED);
        } else {
            config.handler(config.context, &request, &answer);
        }
    } catch (const std::exception &thrown) {
        userlog_err(__func__, __LINE__, "the handler threw: %s", thrown.what());
        board_answer_fail(&answer, IPC_ERR_SERVICE);
    }
    return true;
}

bool Answering::send(int socket, board_answer &answer, const sockaddr *to, socklen_t to_length) const
{
    constexpr int flags = MSG_DONTWAIT | MSG_NOSIGNAL;
    const int memory = answer.frame.header.result.state == Result::shared ? answer.memory.to_pass() : -1;
    if (memory < 0) return sendto(socket, &answer.frame, answer.frame.size(), flags, to, to_length) >= 0;

    iovec part{&answer.frame, answer.frame.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message{};
    message.msg_name = const_cast<sockaddr *>(to);
    message.msg_namelen = to_length;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr *const passed = CMSG_FIRSTHDR(&message);
    passed->cmsg_level = SOL_SOCKET;
    passed->cmsg_type = SCM_RIGHTS;
    passed->cmsg_len = CMSG_LEN(sizeof memory);
    std::memcpy(CMSG_DATA(passed), &memory, sizeof memory);
    const bool sent = sendmsg(socket, &message, flags) >= 0;
    const int error = errno;
    answer.memory.passed();
    errno = error;
    return sent;
}

} // namespace board

void board_answer_status(board_answer *answer, uint32_t status)
{
    answer->frame.header.status = status;
}

void board_answer_fail(board_answer *answer, int32_t result)
{
    answer->frame.header.ipc_result = result ? result : IPC_ERR_SERVICE;
}

int board_answer_data(board_answer *answer, const void *data, uint32_t length)
{
    if (length > sizeof answer->frame.data) return -1;
    if (length) std::memcpy(answer->frame.data, data, length);
    answer->frame.header.length = length;
    return 0;
}

int board_answer_result(board_answer *answer, uint32_t key, const char *json, uint32_t length)
{
    board::Result &result = answer->frame.header.result;
    result = {board::Result::too_long, key, 0, length, 0};
    if (length > BOARD_RESULT_MAX) return -1;
    if (answer->memory.put(key, json, length, result)) return 0;
    result = {};
    return -1;
}

#include "answering.h"

#include <algorithm>
#include <cstring>
#include <exception>

#include <sys/socket.h>

#include "board/util.h"
#include "packet.h"

namespace board
{

Head refusal_of(Refusal reason)
{
    return {.kind = Kind::refusal, .detail = static_cast<uint8_t>(reason)};
}

void Complaints::log(const ucred &peer, const char *what, const char *why)
{
    constexpr unsigned lines_a_second = 10;
    constexpr size_t users_a_second = 10;
    const std::lock_guard lock(mutex);
    const auto now = std::chrono::steady_clock::now();
    if (now - second >= std::chrono::seconds(1)) {
        if (left_out) userlog_err("board_service", __LINE__, "%u more complaints about peers left out", left_out);
        second = now;
        logged.clear();
        left_out = 0;
    }
    const bool room = logged.contains(peer.uid) || logged.size() < users_a_second;
    if (!room || logged[peer.uid] == lines_a_second) {
        ++left_out;
        return;
    }
    ++logged[peer.uid];
    userlog_err("board_service", __LINE__, "%s of process %d, user %u: %s", what, static_cast<int>(peer.pid),
                static_cast<unsigned>(peer.uid), why);
}

// Returns the peer's groups, or null when they are not known. A list that is known to be empty is not null.
static const gid_t *known_groups(const Peer &peer)
{
    static constexpr gid_t none = 0;
    if (!peer.groups) return nullptr;
    return peer.groups->empty() ? &none : peer.groups->data();
}

bool Answering::handle(const RequestFrame &frame, size_t received, bool datagram, const Peer &peer,
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
    answer.sending = {};
    const board_request request{.call = static_cast<board_call>(header.head.detail),
                                .msg_type = header.msg_type,
                                .data = frame.data,
                                .length = header.length,
                                .allowed = header.allowed,
                                .pid = peer.pid,
                                .uid = peer.uid,
                                .gid = peer.gid,
                                .groups = known_groups(peer),
                                .group_count = peer.groups ? static_cast<uint32_t>(peer.groups->size()) : 0};
    std::unique_lock lock(one_at_a_time, std::defer_lock);
    if (!config.concurrent) lock.lock();
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

bool Answering::send(int socket, board_answer &answer)
{
    if (answer.sending.dropped) return true;
    for (uint32_t sent = 0; sent <= answer.sending.repeats; ++sent)
        if (!send_once(socket, answer)) return false;
    return true;
}

bool Answering::send_once(int socket, board_answer &answer)
{
    Result &result = answer.frame.header.result;
    result.new_memory = result.in_memory() && answer.memory.to_pass() >= 0;
    if (send_packet(socket, &answer.frame, answer.frame.size(), -1) < 0) return false;
    if (!result.new_memory) return true;
    const Head memory{.kind = Kind::memory, .detail = 0};
    if (send_packet(socket, &memory, sizeof memory, answer.memory.to_pass()) < 0) return false;
    answer.memory.passed();
    return true;
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
    result = {board::Result::too_long, 0, key, 0, length, 0};
    if (length > BOARD_RESULT_MAX) return -1;
    if (answer->memory.put(board::Result::shared, key, json, length, result)) return 0;
    result = {};
    return -1;
}

int board_answer_file(board_answer *answer, const void *bytes, uint32_t length)
{
    board::Result &result = answer->frame.header.result;
    if (length <= BOARD_FILE_MAX &&
        answer->memory.put(board::Result::file, 0, static_cast<const char *>(bytes), length, result))
        return 0;
    result = {};
    return -1;
}

void board_answer_delay(board_answer *answer, uint32_t milliseconds)
{
    answer->sending.delay = std::chrono::milliseconds(std::min(milliseconds, BOARD_DELAY_MAX));
}

void board_answer_drop(board_answer *answer)
{
    answer->sending.dropped = true;
}

void board_answer_repeat(board_answer *answer, uint32_t times)
{
    answer->sending.repeats = std::min(times, BOARD_REPEAT_MAX);
}

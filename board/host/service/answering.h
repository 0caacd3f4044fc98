// This file makes an answer's frame from a request's frame. It is the part of serving that is the same for connections
// and datagrams.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include <sys/socket.h>

#include "board/service.h"
#include "frame.h"
#include "shared_memory.h"

// A board_answer is the answer under construction, in the frame that will be sent.
struct board_answer {
    explicit board_answer(bool for_datagrams) : memory(for_datagrams) {}

    board::AnswerFrame frame;
    board::ResultMemory memory;

    // Sending says how the answer is sent.
    struct Sending {
        std::chrono::milliseconds delay{0};
        uint32_t repeats = 0;
        bool dropped = false;
    } sending;
};

namespace board
{

// A Peer is who sends requests, as the kernel says.
struct Peer : ucred {
    std::optional<std::vector<gid_t>> groups = {}; // beside its own; none: not known
};

// Complaints are log lines that a peer can cause as often as it likes. In a second only some are logged of each user,
// and of so many users; the others are counted.
class Complaints
{
public:
    void log(const ucred &peer, const char *what, const char *why);

private:
    std::mutex mutex;
    std::chrono::steady_clock::time_point second;
    std::map<uid_t, unsigned> logged; // in this second
    unsigned left_out = 0;
};

class Answering
{
public:
    explicit Answering(const board_service_config &service_config) : config(service_config) {}

    // Checks a packet of `received` bytes and lets the handler handle it. Returns true when the answer is in `answer`.
    // Returns false when the packet is no request; then `refusal` must be sent.
    bool handle(const RequestFrame &request, size_t received, bool datagram, const Peer &peer, board_answer &answer,
                Head &refusal);

    // Sends an answer as often as it must be sent, unless it is dropped. Sends its memory behind it when the peer has
    // not received that memory yet. Returns false when the peer does not take the answer, because nobody may wait for
    // the peer.
    static bool send(int socket, board_answer &answer);

    Complaints complaints;

private:
    static bool send_once(int socket, board_answer &answer);

    const board_service_config &config;
    std::mutex one_at_a_time;
};

Head refusal_of(Refusal reason);

} // namespace board

// From a request's frame to its answer's: the part of serving that is the same for connections and datagrams.
#pragma once

#include <chrono>
#include <mutex>

#include <sys/socket.h>

#include "board/service.h"
#include "frame.h"
#include "shared_memory.h"
#include "trace_writer.h"

// The answer under construction, in the frame that will be sent.
struct board_answer {
    explicit board_answer(bool for_datagrams) : memory(for_datagrams) {}

    board::AnswerFrame frame;
    board::ResultMemory memory;

    // How it goes out.
    struct Sending {
        std::chrono::milliseconds delay{0};
        uint32_t repeats = 0;
        bool dropped = false;
    } sending;
};

namespace board
{

// Log lines that a peer can cause at will: some a second, then a count of those left out.
class Complaints
{
public:
    void log(const ucred &peer, const char *what, const char *why);

private:
    std::mutex mutex;
    std::chrono::steady_clock::time_point second;
    unsigned logged = 0;
    unsigned left_out = 0;
};

class Answering
{
public:
    explicit Answering(const board_service_config &service_config)
        : config(service_config), recorder(service_config.record)
    {
    }

    // False when the file for the record cannot be used; the log says why.
    bool is_ready() const { return !config.record || recorder.is_on(); }

    // Checks a packet of `received` bytes and has it handled. True: the answer stands in `answer`. False: it is no
    // request; `refusal` is to be sent.
    bool handle(const RequestFrame &request, size_t received, bool datagram, const ucred &peer, board_answer &answer,
                Head &refusal);

    // Sends an answer, and its memory behind it when the peer has still to get it, unless it is dropped, and as often
    // as it is to go out. False when the peer does not take it: it must not be waited for.
    static bool send(int socket, board_answer &answer);

    Complaints complaints;

private:
    static bool send_once(int socket, board_answer &answer);
    void record(const board_request &request, const board_answer &answer);

    const board_service_config &config;
    TraceWriter recorder;
    std::mutex one_at_a_time;
};

Head refusal_of(Refusal reason);

} // namespace board

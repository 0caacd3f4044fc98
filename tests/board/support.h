// This file has what the tests of the host edition share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <sys/types.h>

#include "board/ipc.h"
#include "board/service.h"
#include "descriptor.h"
#include "frame.h"

// The tests use this module and this channel where any would do.
constexpr uint32_t test_module = 6;
constexpr uint32_t test_channel = 232;

// A TestEnvironment sets the environment of the whole test program, before anything has read it. A program has one, at
// namespace scope. BOARD_IPC_DIR is a new folder for each run, which is removed at its end.
class TestEnvironment
{
public:
    struct Variable {
        const char *name, *value;
    };
    explicit TestEnvironment(std::initializer_list<Variable> variables = {});
    ~TestEnvironment();
};

using Handler = std::function<void(const board_request &, board_answer &)>;
using Authorize = std::function<const char *(const board_request &)>;

// A TestService is a service of the test module in this process. It ends with its scope.
class TestService
{
public:
    // Records each exchange at the time `recorded_time`, in nanoseconds, unless the file's name `record` is null.
    explicit TestService(Handler handler, Authorize authorize = nullptr, const char *record = nullptr);
    ~TestService() { stop(); }
    TestService(const TestService &) = delete;

    bool is_running() const { return service; }
    void stop();

private:
    Handler handler;
    Authorize authorize;
    board_recorder *recorder = nullptr; // null: none is wanted, or its file cannot be used
    board_service *service = nullptr;
};

constexpr uint64_t recorded_time = 1234567890;

// Returns a handler that answers with the request's bytes and the status `status`.
Handler echo(uint32_t status = 0);

// Returns the path of one of the test module's sockets; `kind` is "seq" or "dgram".
std::string socket_path(const char *kind);

// A RawClient is a client of the test module's service that may send packets that are no frames. Its waiting is
// bounded.
class RawClient
{
public:
    explicit RawClient(const char *kind);

    // Returns false, with an error number, when the whole packet was not taken.
    bool send(const void *packet, size_t size, bool wait = true);
    bool send(const std::string &packet) { return send(packet.data(), packet.size()); }
    // Returns the service's next packet. It is empty when the service hung up.
    std::string next_packet();

    board::Descriptor socket;

private:
    board::Descriptor answers, answers_of_service; // for datagrams
};

// A RawService answers each request with packets that the test makes.
class RawService
{
public:
    struct Packet {
        std::string bytes;
        int descriptor = -1;     // is passed along
        bool given_away = false; // the descriptor is closed then
    };
    using Answers = std::function<std::vector<Packet>(const board::RequestFrame &)>;

    // When `hang_up` is true, it hangs up after it has sent the packets of one request.
    RawService(const char *kind, Answers answers, bool hang_up = false);
    ~RawService();
    RawService(const RawService &) = delete;

private:
    void serve(int socket);

    Answers answers;
    bool hang_up;
    bool datagrams;
    board::Descriptor listener;
    std::thread thread;
};

// Returns the bytes of an answer to `request`, as a correct service sends them.
board::AnswerFrame answer_to(const board::RequestFrame &request);
std::string bytes_of(const board::AnswerFrame &frame);

// Returns a connection that nothing can close at once: it has data that the other end does not take, and waits an hour
// for that. The wait ends with the other end.
board::Descriptor lingering_connection(board::Descriptor &other_end);

// Sends a packet and all of these descriptors with it. Returns whether it was sent.
bool send_with(const board::Descriptor &socket, const void *packet, size_t size,
               const std::vector<board::Descriptor> &passed);

// Runs `body` in the calling thread as another user, which only root can.
void as_user(uid_t user, const std::function<void()> &body);

// Runs `body` in a forked child. Returns its result as an exit status, or 128 + the signal that ended it.
int in_child(const std::function<int()> &body);

// These return how many descriptors this process has open, and how many memories for results it has mapped.
size_t open_descriptors();
size_t shared_mappings();

// Returns what standard error receives while `body` runs.
std::string log_of(const std::function<void()> &body);

// Waits until `condition` is true, for half a minute at most.
bool eventually(const std::function<bool()> &condition);

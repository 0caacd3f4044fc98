// What the host edition's tests share.
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

// The module and the channel that the tests use, where it does not matter which.
constexpr uint32_t test_module = 6;
constexpr uint32_t test_channel = 232;

// Sets the environment of the whole test program, before anything has read it. One a program, at namespace scope.
// BOARD_IPC_DIR is a new folder for each run, removed at its end.
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

// A service of the test module, in this process, until the end of the scope.
class TestService
{
public:
    explicit TestService(Handler handler, Authorize authorize = nullptr, const char *record = nullptr);
    ~TestService() { stop(); }
    TestService(const TestService &) = delete;

    bool is_running() const { return service; }
    void stop();

private:
    Handler handler;
    Authorize authorize;
    board_service *service;
};

// Answers with the request's bytes and a status of `status`.
Handler echo(uint32_t status = 0);

// The path of one of the test module's sockets, `kind` being "seq" or "dgram".
std::string socket_path(const char *kind);

// A client of the test module's service that need not speak frames. Waiting ends in time.
class RawClient
{
public:
    explicit RawClient(const char *kind);

    // False, and an error number, when the packet was not taken whole.
    bool send(const void *packet, size_t size, bool wait = true);
    bool send(const std::string &packet) { return send(packet.data(), packet.size()); }
    // What the service says: its next packet, empty when it hung up.
    std::string next_packet();

    board::Descriptor socket;

private:
    board::Descriptor answers, answers_of_service; // of datagrams
};

// A service that answers each request with packets of the test's making.
class RawService
{
public:
    struct Packet {
        std::string bytes;
        int descriptor = -1; // passed along
    };
    using Answers = std::function<std::vector<Packet>(const board::RequestFrame &)>;

    // Having sent the packets of one request, it hangs up if asked to.
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

// The bytes of an answer to `request`, as a service in order sends it.
board::AnswerFrame answer_to(const board::RequestFrame &request);
std::string bytes_of(const board::AnswerFrame &frame);

// Runs `body` in a forked child and returns its result as an exit status, or 128 + the signal that ended it.
int in_child(const std::function<int()> &body);

// What this process has open, and the memory for results that it has mapped.
size_t open_descriptors();
size_t shared_mappings();

// What standard error receives while `body` runs.
std::string log_of(const std::function<void()> &body);

// Waits, for half a minute at most, until `condition` holds.
bool eventually(const std::function<bool()> &condition);

// What the host edition's tests share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <sys/types.h>

#include "board/ipc.h"
#include "board/service.h"

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
    explicit TestService(Handler handler, Authorize authorize = nullptr);
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

// Runs `body` in a forked child and returns its result as an exit status, or 128 + the signal that ended it.
int in_child(const std::function<int()> &body);

// What this process has open, and the memory for results that it has mapped.
size_t open_descriptors();
size_t shared_mappings();

// What standard error receives while `body` runs.
std::string log_of(const std::function<void()> &body);

// Waits, for half a minute at most, until `condition` holds.
bool eventually(const std::function<bool()> &condition);

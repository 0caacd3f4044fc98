#include "support.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

std::string test_directory;
pid_t owner;

} // namespace

TestEnvironment::TestEnvironment(std::initializer_list<Variable> variables)
{
    char name[] = "/tmp/board-test-XXXXXX";
    if (!mkdtemp(name)) std::abort();
    test_directory = name;
    owner = getpid();
    setenv("BOARD_IPC_DIR", name, 1);
    for (const Variable &variable : variables)
        setenv(variable.name, variable.value, 1);
}

TestEnvironment::~TestEnvironment()
{
    if (getpid() != owner) return;
    std::error_code ignored;
    fs::remove_all(test_directory, ignored);
}

TestService::TestService(Handler handle, Authorize allow) : handler(std::move(handle)), authorize(std::move(allow))
{
    board_service_config config{};
    config.module = test_module;
    config.context = this;
    config.handler = [](void *context, const board_request *request, board_answer *answer) {
        static_cast<TestService *>(context)->handler(*request, *answer);
    };
    if (authorize)
        config.authorize = [](void *context, const board_request *request) {
            return static_cast<TestService *>(context)->authorize(*request);
        };
    service = board_service_start(&config);
}

void TestService::stop()
{
    board_service_stop(service);
    service = nullptr;
}

Handler echo(uint32_t status)
{
    return [status](const board_request &request, board_answer &answer) {
        board_answer_status(&answer, status);
        board_answer_data(&answer, request.data, request.length);
    };
}

int in_child(const std::function<int()> &body)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

size_t open_descriptors()
{
    size_t count = 0;
    for ([[maybe_unused]] const auto &entry : fs::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

size_t shared_mappings()
{
    std::ifstream maps("/proc/self/maps");
    size_t count = 0;
    for (std::string line; std::getline(maps, line);)
        count += line.find("board-result") != std::string::npos;
    return count;
}

std::string log_of(const std::function<void()> &body)
{
    char name[] = "/tmp/board-log-XXXXXX";
    const int file = mkstemp(name);
    unlink(name);
    const int standard_error = dup(STDERR_FILENO);
    dup2(file, STDERR_FILENO);
    body();
    dup2(standard_error, STDERR_FILENO);
    close(standard_error);
    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    const ssize_t got = pread(file, text.data(), text.size(), 0);
    close(file);
    text.resize(got < 0 ? 0 : static_cast<size_t>(got));
    return text;
}

bool eventually(const std::function<bool()> &condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::yield();
    }
    return true;
}

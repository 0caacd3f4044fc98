#include "daemon/control_client.h"

#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <unistd.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "control/control.h"
#include "daemon/alarm_events.h"
#include "daemon/console.h"
#include "text/utf8.h"

namespace ponsim
{
namespace
{

// A StepProgress is one line on a terminal that shows how much of a step has passed. It disappears when the object is
// destroyed. Without a terminal there is no line.
class StepProgress
{
public:
    explicit StepProgress(ModelTime step_length) : length(std::max<ModelTime>(step_length, 1))
    {
        if (!isatty(STDERR_FILENO)) return;
        from = time_told(send_control("now"));
        thread = std::thread(&StepProgress::show, this);
    }
    ~StepProgress()
    {
        if (!thread.joinable()) return;
        {
            const std::lock_guard lock(mutex);
            ended = true;
        }
        changed.notify_all();
        thread.join();
        std::fputs("\r\033[K", stderr);
    }
    StepProgress(const StepProgress &) = delete;
    StepProgress &operator=(const StepProgress &) = delete;

private:
    void show()
    {
        constexpr std::chrono::milliseconds pause{200};
        ModelTime passed = 0;
        std::unique_lock lock(mutex);
        do {
            lock.unlock();
            std::fprintf(stderr, "\r\033[K%" PRIu64 " %% of the step", std::min(passed, length) * 100 / length);
            try {
                passed = time_told(send_control("now")) - from;
            } catch (const std::exception &) {
                // The step itself says what is wrong.
            }
            lock.lock();
        } while (!changed.wait_for(lock, pause, [this] { return ended; }));
    }

    const ModelTime length;
    ModelTime from = 0;
    std::mutex mutex; // guards `ended`
    std::condition_variable changed;
    bool ended = false;
    std::thread thread;
};

} // namespace

std::string send_control(const std::string &line)
{
    if (line.size() > IPC_MAX_LENGTH) throw ControlError("the command is too long");
    std::string said(IPC_MAX_LENGTH, '\0');
    auto length = static_cast<uint32_t>(said.size());
    uint32_t status = 0;
    const int32_t result = ipc_get_exec(control_module, control_channel, line.data(),
                                        static_cast<uint32_t>(line.size()), said.data(), &length, &status);
    const std::string failure = std::string(board_ipc_directory()) + ": " + ipc_strerror(result);
    if (result == IPC_ERR_NO_SERVICE) throw NoServiceError(failure);
    if (result != IPC_OK) throw std::runtime_error(failure);
    said.resize(length);
    if (status == control_refused) throw ControlError(said);
    const std::unique_ptr<db_handle, void (*)(db_handle *)> more(db_from_shmem(control_result, BOARD_RESULT_MAX),
                                                                 db_free);
    if (more) said = db_text(more.get(), nullptr);
    return said;
}

std::string send_step(const std::string &line, ModelTime length)
{
    constexpr uint32_t longest_wait = std::numeric_limits<int32_t>::max(); // ms
    const StepProgress progress(length);
    const uint32_t before = board_ipc_use_thread_timeout(longest_wait);
    try {
        std::string said = send_control(line);
        board_ipc_use_thread_timeout(before);
        return said;
    } catch (...) {
        board_ipc_use_thread_timeout(before);
        throw;
    }
}

void print_events(std::optional<uint64_t> since, bool follow)
{
    constexpr std::chrono::milliseconds pause{100};
    std::string line = since ? "events " + std::to_string(*since) : "events";
    for (;;) {
        const std::string said = send_control(line);
        if (said.empty()) {
            if (!follow) return;
            std::this_thread::sleep_for(pause);
            continue;
        }
        if (std::fputs(text::printable(said, "\n").c_str(), stdout) == EOF || std::fflush(stdout) == EOF)
            throw std::runtime_error("the events cannot be written");
        const size_t last = said.rfind('\n', said.size() - 2);
        line = "events " + std::to_string(number_of(last == std::string::npos ? said : said.substr(last + 1)));
    }
}

ModelTime time_told(const std::string &answer)
{
    uint64_t whole = 0, rest = 0;
    std::sscanf(answer.c_str(), "%" SCNu64 ".%3" SCNu64, &whole, &rest);
    return whole * ms_per_second + rest;
}

} // namespace ponsim

#include "fleet/bridge/stdio.h"

#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <utility>

#include <unistd.h>

#include "fleet/bridge/engine.h"

namespace fleet
{
namespace
{

// A line of a request has its frame, too.
constexpr size_t longest_frame = longest_request + 1024;
constexpr size_t part = 65536;

// What has come and is not answered yet.
class Unanswered
{
public:
    void add()
    {
        const std::lock_guard lock(guard);
        ++count;
    }
    void take()
    {
        const std::lock_guard lock(guard);
        --count;
        changed.notify_all();
    }
    void wait_for_all()
    {
        std::unique_lock lock(guard);
        changed.wait(lock, [this] { return count == 0; });
    }

private:
    std::mutex guard;
    std::condition_variable changed;
    size_t count = 0;
};

// Several threads write lines. When nobody reads them any more, they are dropped.
class LineWriter
{
public:
    explicit LineWriter(int output) : file(output) {}

    void write(const std::string &line)
    {
        const std::string text = line + '\n';
        const std::lock_guard lock(guard);
        for (size_t done = 0; done < text.size();) {
            const ssize_t written = ::write(file, text.data() + done, text.size() - done);
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return;
            done += static_cast<size_t>(written);
        }
    }

private:
    const int file;
    std::mutex guard;
};

} // namespace

void serve_lines(int input, int output, const StdioSettings &settings)
{
    LineWriter writer(output);
    Unanswered unanswered;
    Engine engine({.threads = 1}, settings.notes);
    engine.serve({settings.olt}, {});
    writer.write(to_line(settings.hello));

    std::string read(part, '\0'), line;
    while (true) {
        const ssize_t got = ::read(input, read.data(), read.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw std::runtime_error(std::string("no request can be read: ") + std::strerror(errno));
        if (got == 0) return unanswered.wait_for_all();
        std::string_view rest(read.data(), static_cast<size_t>(got));
        for (size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1)) {
            line.append(rest.substr(0, end));
            RequestFrame frame = request_from_line(std::exchange(line, {}));
            unanswered.add();
            engine.ask(
                settings.olt.name,
                {.client = settings.client, .address = "ssh", .impact = frame.impact, .text = std::move(frame.request)},
                [&, correlation = std::move(frame.correlation)](std::string answer) {
                    writer.write(to_line(AnswerFrame{correlation, std::move(answer)}));
                    unanswered.take();
                });
        }
        line.append(rest);
        if (line.size() > longest_frame) throw std::runtime_error("a request is too long");
    }
}

} // namespace fleet

#include "reach/workers.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "call/record_call.h"
#include "fleet/carrier/carrier.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "reach/pipe.h"

namespace ponctl
{
namespace
{

// The link of a worker: its parent passes the requests on.
class ParentLink : public fleet::Link
{
public:
    explicit ParentLink(int to) : socket(to) {}

    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override
    {
        if (!say(socket, {Said::request, static_cast<uint32_t>(impact), milliseconds, request}))
            throw Error("whoever sends the requests is gone");
        const std::optional<Saying> answer = listen_to(socket);
        if (!answer || answer->kind == Said::silence) return std::nullopt;
        if (answer->kind == Said::failure) throw fleet::Unreachable(answer->text);
        return answer->text;
    }

private:
    int socket;
};

int memory_file(const char *name)
{
    const int file = memfd_create(name, MFD_CLOEXEC);
    if (file < 0) throw Error(std::string("no memory for what a command writes: ") + std::strerror(errno));
    return file;
}

std::string content_of(int file)
{
    const off_t size = lseek(file, 0, SEEK_END);
    std::string content(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    const ssize_t got = pread(file, content.data(), content.size(), 0);
    content.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return content;
}

fleet::State state_of(fleet::Certainty certainty, int code)
{
    switch (certainty) {
    case fleet::Certainty::unknown:
        return fleet::State::unknown;
    case fleet::Certainty::refused:
        return fleet::State::refused;
    case fleet::Certainty::unreachable:
        return code == exit_success ? fleet::State::done : fleet::State::unreachable;
    case fleet::Certainty::certain:
        break;
    }
    return code == exit_success ? fleet::State::done : fleet::State::failed;
}

// Leaves to a worker nothing of its parent but its own socket: who inherits those of other workers keeps them open, and
// who inherits the run file keeps it locked. A worker ends with its parent. Returns the socket.
int keep_only(int socket, pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(exit_ipc);
    constexpr int first = STDERR_FILENO + 1;
    dup2(socket, first);
    close_range(first + 1, ~0u, 0);
    return first;
}

} // namespace

struct Workers::Worker {
    uint64_t number;
    std::string olt;
    pid_t process = -1;
    int socket = -1, output = -1, errors = -1;
    bool changes = false;                                       // it has asked for something that is no reading
    fleet::Certainty certainty = fleet::Certainty::unreachable; // until it says better
    bool has_ended = false;                                     // it said how sure it is
    std::string why;
};

Workers::Workers(fleet::Client &of, WorkerRules wanted) : client(of), rules(std::move(wanted)) {}

Workers::~Workers()
{
    for (Worker &worker : workers)
        kill(worker.process, SIGKILL);
    for (Worker &worker : workers)
        end(worker);
}

void Workers::start(const std::string &olt, const std::function<int()> &act)
{
    Worker &worker = workers.emplace_back();
    worker.number = ++started;
    worker.olt = olt;
    worker.output = memory_file("output");
    worker.errors = memory_file("errors");
    int pair[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0)
        throw Error(std::string("no sockets for a process: ") + std::strerror(errno));
    std::fflush(nullptr);
    const pid_t parent = getpid();
    worker.process = fork();
    if (worker.process == 0) {
        worker.socket = pair[1];
        work(worker, parent, act);
    }
    close(pair[1]);
    worker.socket = pair[0];
    if (worker.process < 0) throw Error(std::string("no process: ") + std::strerror(errno));
}

// An interrupt of the terminal is for the parent, which decides what becomes of those that run.
void Workers::work(const Worker &worker, pid_t parent, const std::function<int()> &act) const
{
    std::signal(SIGINT, SIG_IGN);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(worker.output, STDOUT_FILENO);
    dup2(worker.errors, STDERR_FILENO);
    const int socket = keep_only(worker.socket, parent);
    if (rules.answer)
        ask_through([socket](const std::string &preview, const std::string &action) {
            const auto nul = std::string(1, '\0');
            if (!say(socket, {Said::question, 0, 0, preview + nul + action})) return false;
            const std::optional<Saying> answer = listen_to(socket);
            return answer && answer->kind == Said::consent;
        });
    ParentLink link(socket);
    fleet::OltCarrier carrier(link, {.run = rules.run, .olt = worker.olt, .deadline = rules.timeout});
    int code = exit_ipc;
    try {
        const call::Carriage carriage(carrier);
        code = act();
    } catch (const Error &error) {
        complain(error.what());
        code = exit_usage;
    }
    std::fflush(nullptr);
    say(socket, {Said::end, static_cast<uint32_t>(carrier.certainty()), 0, carrier.reason()});
    _exit(code);
}

Workers::Worker *Workers::find(uint64_t number)
{
    const auto found = std::ranges::find(workers, number, &Worker::number);
    return found == workers.end() ? nullptr : &*found;
}

void Workers::pass_on(Worker &worker, uint32_t impact, uint32_t milliseconds, std::string request)
{
    const auto wanted = static_cast<catalogue::Class>(impact);
    if (wanted != catalogue::Class::read && !worker.changes) {
        worker.changes = true;
        rules.before_change(worker.olt);
    }
    client.send(worker.olt, wanted, std::move(request), milliseconds,
                [this, number = worker.number](const fleet::Reply &reply) {
                    Worker *waiting = find(number);
                    if (!waiting) return;
                    const Said kind = reply.kind == fleet::Reply::Kind::answered ? Said::answer
                                      : reply.kind == fleet::Reply::Kind::silent ? Said::silence
                                                                                 : Said::failure;
                    say(waiting->socket, {kind, 0, 0, reply.text});
                });
}

bool Workers::take(Worker &worker)
{
    std::optional<Saying> said = listen_to(worker.socket);
    if (!said) return false;
    if (said->kind == Said::request) {
        pass_on(worker, said->number, said->milliseconds, std::move(said->text));
    } else if (said->kind == Said::question) {
        const size_t nul = said->text.find('\0');
        const bool good = rules.answer(worker.olt, said->text.substr(0, nul), said->text.substr(nul + 1));
        say(worker.socket, {good ? Said::consent : Said::refusal, 0, 0, {}});
    } else {
        worker.certainty = static_cast<fleet::Certainty>(said->number);
        worker.why = said->text;
        worker.has_ended = true;
    }
    return true;
}

WorkerEnd Workers::end(Worker &worker)
{
    int status = 0;
    while (worker.process > 0 && waitpid(worker.process, &status, 0) < 0 && errno == EINTR)
        ;
    WorkerEnd ended{worker.olt, {}};
    fleet::Result &result = ended.result;
    result.exit = WIFEXITED(status) ? WEXITSTATUS(status) : exit_ipc;
    result.output = content_of(worker.output);
    result.errors = content_of(worker.errors);
    if (!worker.has_ended) {
        // It was killed, or broke: what it had asked for may have been done.
        worker.certainty = worker.changes ? fleet::Certainty::unknown : fleet::Certainty::unreachable;
        worker.why = "the process that did it was ended";
    }
    result.state = state_of(worker.certainty, result.exit);
    if (result.state == fleet::State::unreachable || result.state == fleet::State::unknown)
        result.errors += worker.why.empty() || result.errors.find(worker.why) != std::string::npos
                             ? ""
                             : "ponctl: " + worker.why + "\n";
    for (const int file : {worker.socket, worker.output, worker.errors})
        if (file >= 0) close(file);
    return ended;
}

std::vector<WorkerEnd> Workers::turn(int milliseconds)
{
    std::vector<pollfd> files{{client.descriptor(), POLLIN, 0}};
    for (const Worker &worker : workers)
        files.push_back({worker.socket, POLLIN, 0});
    poll(files.data(), files.size(), milliseconds);
    client.turn(0);
    std::vector<WorkerEnd> ended;
    auto file = files.begin() + 1;
    for (auto worker = workers.begin(); worker != workers.end(); ++file) {
        if (file->revents == 0 || take(*worker)) {
            ++worker;
            continue;
        }
        ended.push_back(end(*worker));
        worker = workers.erase(worker);
    }
    return ended;
}

} // namespace ponctl

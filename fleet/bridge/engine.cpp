#include "fleet/bridge/engine.h"

#include <exception>
#include <optional>
#include <utility>

#include "board/service.h"
#include "fleet/bridge/execution.h"
#include "fleet/journal/journal.h"
#include "fleet/protocol/message.h"

namespace fleet
{
namespace
{

// What waits at all OLTs together takes no more memory than this.
constexpr size_t most_waiting = size_t{64} << 20; // bytes
// When one of those who listen executes what has come, another one listens already: to wake one would take longer than
// many a request.
constexpr uint32_t most_listening = 2;

// The thread that listens executes the first of what it has queued itself.
thread_local bool this_thread_listens = false;

// Another folder ends the connection that the thread keeps.
void go_to(const std::string &folder)
{
    static thread_local std::optional<std::string> here;
    if (here == folder) return;
    board_ipc_use_thread_directory(folder.empty() ? nullptr : folder.c_str());
    here = folder;
}

} // namespace

struct Engine::Olt {
    explicit Olt(const ServedOlt &of) : served(of), journal(of.journal) {}

    const ServedOlt served;
    Journal journal; // of the thread that executes something here
    std::deque<Job> waiting;
    size_t requests = 0;   // that wait
    bool occupied = false; // something is executed, or about to be
};

Engine::Engine(const EngineSettings &wanted, Notes told) : settings(wanted), notes(std::move(told))
{
    for (uint32_t i = 0; i < settings.threads; ++i)
        threads.emplace_back(&Engine::work, this);
}

void Engine::listen(Ear with)
{
    const std::lock_guard lock(guard);
    ear = std::move(with);
    // However many OLTs are slow, somebody listens.
    for (uint32_t i = 0; i < most_listening; ++i)
        threads.emplace_back(&Engine::work, this);
}

void Engine::end()
{
    std::deque<Job> left;
    {
        const std::lock_guard lock(guard);
        stopping = true;
        for (const auto &[name, olt] : olts)
            std::ranges::move(std::exchange(olt->waiting, {}), std::back_inserter(left));
    }
    changed.notify_all();
    if (ear.wake) ear.wake();
    for (std::thread &thread : threads)
        thread.join();
    threads.clear();
    turn_away(std::move(left), "the program that serves the OLT ends");
}

void Engine::turn_away(std::deque<Job> jobs, const std::string &reason)
{
    for (Job &job : jobs)
        if (job.answered) job.answered(answer_of(Failure{Problem::unavailable, reason}));
}

void Engine::serve(const std::vector<ServedOlt> &wanted, const std::optional<Clients> &named)
{
    std::deque<Job> left;
    {
        const std::lock_guard lock(guard);
        std::map<std::string, SharedOlt, std::less<>> others;
        for (const ServedOlt &olt : wanted) {
            const auto before = olts.find(olt.name);
            const bool is_same = before != olts.end() && before->second->served == olt;
            others[olt.name] = is_same ? before->second : std::make_shared<Olt>(olt);
        }
        for (const auto &[name, olt] : olts) {
            const auto now = others.find(name);
            if (now != others.end() && now->second == olt) continue;
            for (Job &job : std::exchange(olt->waiting, {})) {
                waiting -= job.size();
                left.push_back(std::move(job));
            }
            olt->requests = 0;
        }
        olts = std::move(others);
        clients = named ? std::make_shared<const Clients>(*named) : nullptr;
    }
    turn_away(std::move(left), "the OLT is served no more, or in another way");
}

void Engine::ask(const std::string &olt, Incoming incoming, Answered answered)
{
    Failure failure{Problem::unavailable, "no OLT " + olt + " is served here"};
    if (incoming.text.size() > longest_request) {
        failure = {Problem::wrong, "the request: longer than " + std::to_string(longest_request) + " bytes"};
    } else {
        std::unique_lock lock(guard);
        const auto found = olts.find(olt);
        if (found != olts.end() && !stopping) {
            if (waiting + incoming.text.size() > most_waiting) {
                failure = {Problem::busy, "too much waits here"};
            } else if (found->second->requests < settings.queue) {
                ++found->second->requests;
                waiting += incoming.text.size();
                queue(lock, found->second, {std::move(incoming), std::move(answered)});
                return;
            } else {
                failure = {Problem::busy, std::to_string(found->second->requests) + " requests wait for this OLT"};
            }
        }
    }
    answered(answer_of(failure));
}

void Engine::visit(const std::string &olt, Visit visited)
{
    std::unique_lock lock(guard);
    const auto found = olts.find(olt);
    if (found != olts.end() && !stopping)
        queue(lock, found->second, {.incoming = {}, .answered = {}, .visit = std::move(visited)});
}

void Engine::queue(std::unique_lock<std::mutex> &lock, const SharedOlt &olt, Job job)
{
    olt->waiting.push_back(std::move(job));
    if (std::exchange(olt->occupied, true)) return;
    ready.push_back(olt);
    const bool needs_another = !this_thread_listens || ready.size() > 1;
    lock.unlock();
    if (needs_another) changed.notify_one();
}

void Engine::work()
{
    std::unique_lock lock(guard);
    while (true) {
        changed.wait(lock, [this] { return stopping || can_execute() || (ear.turn && listening < most_listening); });
        if (stopping) return;
        if (!can_execute()) {
            ++listening;
            this_thread_listens = true;
            lock.unlock();
            ear.turn();
            lock.lock();
            --listening;
            this_thread_listens = false;
            if (stopping) return ear.wake(); // the other one
            if (!can_execute()) continue;
        }
        const SharedOlt olt = std::move(ready.front());
        ready.pop_front();
        ++executing;
        if (!olt->waiting.empty()) {
            Job job = std::move(olt->waiting.front());
            olt->waiting.pop_front();
            if (job.incoming) --olt->requests;
            waiting -= job.size();
            const std::shared_ptr<const Clients> permitted = clients;
            const bool nobody_listens = ear.turn && listening == 0;
            lock.unlock();
            if (nobody_listens) changed.notify_one();
            perform(*olt, job, permitted);
            job = {};
            lock.lock();
        }
        --executing;
        // Others have their turn before the same OLT has its next one.
        olt->occupied = !olt->waiting.empty();
        if (olt->occupied) ready.push_back(olt);
    }
}

void Engine::perform(Olt &olt, Job &job, const std::shared_ptr<const Clients> &permitted)
{
    go_to(olt.served.socket_dir);
    std::string answer;
    try {
        if (job.visit) return job.visit();
        answer = execute(*job.incoming, {olt.served, olt.journal, permitted.get(), refusals, notes});
    } catch (const std::exception &error) {
        notes.complain(olt.served.name + ": " + error.what());
        answer = answer_of(Failure{Problem::unknown, "the program that serves the OLT failed"});
    }
    if (job.answered) job.answered(std::move(answer));
}

} // namespace fleet

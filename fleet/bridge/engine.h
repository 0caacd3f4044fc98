// The Engine executes requests at OLTs: at each one after the other, as many at once as it has threads.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "fleet/bridge/refusals.h"
#include "fleet/bridge/request.h"

namespace fleet
{

struct EngineSettings {
    uint32_t threads = 4;
    uint32_t queue = 16; // requests that wait at an OLT

    bool operator==(const EngineSettings &) const = default;
};

class Engine
{
public:
    using Answered = std::function<void(std::string answer)>;
    using Visit = std::function<void()>;

    // How requests come: `turn` waits for them for a while and asks for what has come, and `wake` lets it return. Two
    // threads call `turn` at once, and `wake` is called again for the second one.
    struct Ear {
        std::function<void()> turn, wake;
    };

    Engine(const EngineSettings &settings, Notes notes);
    ~Engine() { end(); }
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    // Ends after what is executed just now. What waits is answered, and not executed. Nothing is asked for later.
    void end();

    // From now on two threads listen, and execute themselves what comes first: nobody has to be woken for it. Others
    // take their places when both execute. To be called once at most.
    void listen(Ear with);

    // Serves these OLTs from now on. Those that are as before keep what waits for them.
    void serve(const std::vector<ServedOlt> &olts, const std::optional<Clients> &clients);

    // Any thread may call these. The functions that are given are called from a thread of the engine, or from the one
    // that calls. They may call these again, and must not throw.

    // Executes the request when its turn comes.
    void ask(const std::string &olt, Incoming incoming, Answered answered);
    // Calls the function when the OLT's turn comes, on a thread whose calls of the library go to that OLT. A visit that
    // waits when the OLT is served no more is not made.
    void visit(const std::string &olt, Visit visit);

private:
    struct Job {
        std::optional<Incoming> incoming; // none: a visit
        Answered answered = {};
        Visit visit = {};

        size_t size() const { return incoming ? incoming->text.size() : 0; }
    };
    struct Olt;
    using SharedOlt = std::shared_ptr<Olt>;

    void work();
    bool can_execute() const { return !ready.empty() && executing < settings.threads; }
    void queue(std::unique_lock<std::mutex> &lock, const SharedOlt &olt, Job job);
    void perform(Olt &olt, Job &job, const std::shared_ptr<const Clients> &permitted);
    static void turn_away(std::deque<Job> jobs, const std::string &reason);

    const EngineSettings settings;
    const Notes notes;
    Refusals refusals;

    std::mutex guard; // of what follows
    std::map<std::string, SharedOlt, std::less<>> olts;
    std::shared_ptr<const Clients> clients; // null: nobody is named
    size_t waiting = 0;                     // bytes of requests, at all OLTs
    std::deque<SharedOlt> ready;            // OLTs for which something waits, and at which nothing is executed
    Ear ear;                                // does not become another one while somebody listens
    uint32_t executing = 0;                 // threads
    uint32_t listening = 0;                 // threads, too
    bool stopping = false;
    std::condition_variable changed;
    std::vector<std::thread> threads;
};

} // namespace fleet

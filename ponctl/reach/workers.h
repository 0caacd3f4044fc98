// Workers are processes that do a command for an OLT each. The command runs there as for a local OLT, and its requests
// come to this process, which has the connection to the fleet.
#pragma once

#include <functional>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "fleet/client/client.h"
#include "fleet/rollout/result.h"

namespace ponctl
{

struct WorkerRules {
    std::string run;           // id of the run
    uint32_t timeout = 10'000; // milliseconds for each request
    // Is called before the first request of an OLT that changes something. It may throw; then nothing is sent.
    std::function<void(const std::string &olt)> before_change;
    // Answers a question that a command asks its user. Empty: there is nobody to ask.
    std::function<bool(const std::string &olt, const std::string &preview, const std::string &action)> answer;
};

struct WorkerEnd {
    std::string olt;
    fleet::Result result;
};

class Workers
{
public:
    Workers(fleet::Client &of, WorkerRules rules);
    // Ends those that still run.
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    // Starts a process that does this for the OLT.
    void start(const std::string &olt, const std::function<int()> &act);
    size_t running() const { return workers.size(); }
    // Waits so long at most, and returns those that ended meanwhile.
    std::vector<WorkerEnd> turn(int milliseconds);

private:
    struct Worker;
    using Place = std::list<Worker>::iterator;

    [[noreturn]] void work(const Worker &worker, pid_t parent, const std::function<int()> &act) const;
    // Returns whether the worker lives on.
    bool take(Worker &worker);
    void pass_on(Worker &worker, uint32_t impact, uint32_t milliseconds, std::string request);
    WorkerEnd end(Worker &worker);
    Worker *find(uint64_t number);

    fleet::Client &client;
    const WorkerRules rules;
    std::list<Worker> workers;
    uint64_t started = 0;
};

} // namespace ponctl

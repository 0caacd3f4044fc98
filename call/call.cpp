#include "call/call.h"

#include "board/ipc.h"
#include "board/service.h"
#include "call/codec/search.h"
#include "call/outputs.h"
#include "text/words.h"

namespace call
{
namespace
{

const catalogue::Operation &operation_named(const std::string &name)
{
    if (name.empty()) throw UsageError("operation: missing");
    if (const catalogue::Operation *operation = catalogue::find_operation(name)) return *operation;
    constexpr size_t most = 10;
    const std::vector<std::string_view> near = near_operations(name);
    const bool is_near = !near.empty() && near.size() <= most;
    throw UsageError("operation: there is no '" + name + "'" +
                     (is_near ? "; did you mean " + text::join(near, " or ") + "?" : ""));
}

// A Deadline bounds the calls of this thread while it lives.
class Deadline
{
public:
    explicit Deadline(const std::optional<uint32_t> &milliseconds) : is_set(milliseconds.has_value())
    {
        if (milliseconds == 0u) throw UsageError("deadline_ms: '0' is not a number of milliseconds from 1");
        if (is_set) before = board_ipc_use_thread_timeout(*milliseconds);
    }
    ~Deadline()
    {
        if (is_set) board_ipc_use_thread_timeout(before);
    }
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;

private:
    bool is_set;
    uint32_t before = 0;
};

std::vector<Delivered> outputs_of(const Invocation &called)
{
    std::vector<Delivered> outputs;
    for_each_output(called, [&](size_t index) {
        JsonText json(JsonLayout::one_line);
        write_output(json, called, index);
        outputs.push_back({std::string(called.operation().arguments[index].name), json.written()});
    });
    return outputs;
}

} // namespace

Outcome perform(const Call &asked, Permission &permission)
{
    const catalogue::Operation &operation = operation_named(asked.operation);
    const Deadline deadline(asked.deadline);
    const bool files = false; // a file of this machine, which may be another machine than the caller's
    const Invocation called(operation, asked.arguments, permission, {asked.allow_long, files});
    const Exchange &exchange = called.exchange();
    Outcome outcome{.id = asked.id,
                    .operation = asked.operation,
                    .sent = exchange.made && !exchange.kept_back,
                    .ipc_result = exchange.result,
                    .ipc_text = ipc_strerror(exchange.result),
                    .status = called.status(),
                    .status_name = {},
                    .status_text = {},
                    .outputs = {}};
    if (const catalogue::Status *known = catalogue::find_status(called.status())) {
        outcome.status_name = known->name;
        outcome.status_text = known->brief;
    }
    if (called.answered()) outcome.outputs = outputs_of(called);
    return outcome;
}

} // namespace call

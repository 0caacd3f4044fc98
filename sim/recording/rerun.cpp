#include "recording/rerun.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "board/ipc.h"
#include "board/service.h"
#include "bsp_pon.h"
#include "control/control.h"
#include "daemon/clock.h"
#include "daemon/console.h"
#include "daemon/journal.h"
#include "engine/delivery.h"
#include "engine/simulator.h"
#include "recording/recorded.h"

namespace ponsim
{
namespace
{

// A Session is the OLT of a recording while its session happens again.
class Session
{
public:
    Session(const StoreImage &image, const std::string &upgrade_folder)
        : store(image), simulator(store, WantedSettings{}), clock(simulator.olt().now(), 0)
    {
        if (!upgrade_folder.empty()) simulator.use_upgrade_folder(upgrade_folder);
    }

    ModelTime now() const { return simulator.olt().now(); }
    void advance(ModelTime to)
    {
        if (to > now()) simulator.advance(to);
        clock.reach(now());
    }
    StoreImage image()
    {
        simulator.keep_time();
        return store.image();
    }

    // These let what a record says happen again. They return what is different, or an empty text.
    std::string request(const board_trace_entry &entry);
    std::string command(const board_trace_entry &entry);

private:
    Store store;
    Simulator simulator;
    Clock clock;
};

// Returns how an exchange differs from the recorded one, or an empty text.
std::string difference(const board_trace_entry &recorded, const Delivery &now)
{
    const board_trace_record &record = recorded.record;
    const auto other = [](const std::string &what, uint32_t then, size_t found) {
        return what + " was " + std::to_string(then) + ", now " + std::to_string(found);
    };
    if (record.status != now.status) return other("the status", record.status, now.status);
    const std::string_view answer{reinterpret_cast<const char *>(recorded.response), record.response_length};
    if (answer.size() != now.answer.size())
        return other("the length of the answer", record.response_length, now.answer.size());
    if (answer != now.answer)
        return "byte " + std::to_string(std::ranges::mismatch(answer, now.answer).in1 - answer.begin()) +
               " of the answer is another";
    const uint32_t key = now.file ? BOARD_TRACE_FILE : now.result_key;
    const std::string_view live = now.file.value_or(now.result);
    if (record.result_key != key) return other("the key of the result", record.result_key, key);
    if (record.result_length != live.size())
        return other("the length of the result", record.result_length, live.size());
    const std::string_view result{recorded.result, record.result_carried};
    if (result.size() == live.size() && result != live)
        return "byte " + std::to_string(std::ranges::mismatch(result, live).in1 - result.begin()) +
               " of the result is another";
    return {};
}

std::string Session::request(const board_trace_entry &entry)
{
    const board_trace_record &record = entry.record;
    const Message message{record.msg_type, entry.request, record.request_length,
                          static_cast<catalogue::Call>(record.call)};
    try {
        const std::vector<FaultCase> faults = simulator.faults().happen_to(message);
        Reply reply = simulator.handle(message);
        complete(reply, message, faults);
        if (record.ipc_result != IPC_OK) return "it failed then";
        return difference(entry, delivery_of(reply, message));
    } catch (const std::exception &error) {
        return record.ipc_result == IPC_ERR_SERVICE ? std::string() : error.what();
    }
}

std::string Session::command(const board_trace_entry &entry)
{
    const std::string_view line{reinterpret_cast<const char *>(entry.request), entry.record.request_length};
    try {
        // The time of a step has passed, because it is recorded when it has ended.
        if (!step_length(line)) return difference(entry, delivery_of(control_done, control(simulator, clock, line)));
        simulator.keep_time();
        return difference(entry, delivery_of(control_done, time_passed(simulator)));
    } catch (const std::exception &error) {
        return difference(entry, delivery_of(control_refused, error.what()));
    }
}

// Describes a record for people.
std::string describe(const board_trace_entry &entry)
{
    const std::string_view request{reinterpret_cast<const char *>(entry.request), entry.record.request_length};
    if (entry.record.module == control_module) return "ponsim ctl " + std::string(request);
    return describe_request(entry.record.msg_type, entry.record.call, request);
}

// Returns whether the record is a part of an OLT's image.
bool is_image_part(const board_trace_record &record)
{
    return record.call == BOARD_TRACE_NOTE && record.module == control_module && record.msg_type == image_channel;
}

} // namespace

RerunResult rerun(const std::string &file, const std::string &upgrade_folder, std::optional<ModelTime> until,
                  const std::function<void(const std::string &)> &say)
{
    const Trace trace =
        open_recording(file, "the requests in it cannot be read here; rerun it on such a machine (ponctl "
                             "trace shows it here)");
    if (board_trace_clock(trace.get()) != BOARD_TRACE_SERVICE_TIME)
        throw std::runtime_error(file + ": has no model time, because no ponsim recorded it; ponctl replay sends its "
                                        "requests to a service");
    RerunResult result;
    std::unique_ptr<Session> session;
    StoreImage image;
    board_trace_entry entry;
    int more = 0;
    size_t number = 1;
    for (; (more = board_trace_next(trace.get(), &entry)) == 1; ++number) {
        const board_trace_record &record = entry.record;
        const ModelTime time = record.time / ns_per_ms;
        if (until && time > *until) break;
        if (is_image_part(record)) {
            image.bytes.append(entry.request, entry.request + record.request_length);
            if (record.request_length == BOARD_NOTE_MAX) continue;
            session = std::make_unique<Session>(image, upgrade_folder);
            image.bytes.clear();
            ++result.sessions;
            continue;
        }
        if (record.call > BOARD_CALL_DGRAM_GET) continue; // a note of another kind
        if (!session) throw std::runtime_error(file + ": does not begin with the state of an OLT");
        session->advance(time);
        if (record.ipc_result == IPC_ERR_REFUSED) {
            ++result.refused;
            continue;
        }
        const bool command = record.module == control_module;
        ++(command ? result.commands : result.requests);
        const std::string different = command ? session->command(entry) : session->request(entry);
        if (different.empty()) continue;
        ++result.different;
        say("record " + std::to_string(number) + " at " + seconds_text(time) + ", " + describe(entry) + ": " +
            different);
    }
    if (more < 0) fail_damaged(file, number);
    if (!session) throw std::runtime_error(file + ": does not begin with the state of an OLT");
    if (until) session->advance(*until);
    result.now = session->now();
    result.image = session->image();
    return result;
}

} // namespace ponsim

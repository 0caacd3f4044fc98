// A replay serves a recording as if it were the service: requests are answered as they were when they were recorded.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "board/service.h"

namespace ponsim
{

// A Recording holds the exchanges of the PON service in a file. They are found by their requests.
class Recording
{
public:
    // Throws std::runtime_error when the file cannot be served.
    explicit Recording(const std::string &file);

    struct RecordedAnswer {
        int32_t ipc_result;
        uint32_t status;
        std::string response;
        uint32_t result_key; // 0: no result database
        uint32_t result_length;
        std::string result; // empty when it was too long to travel
    };

    struct Found {
        const RecordedAnswer *answer; // null: there is no answer
        bool same_bytes;              // false: the answer is that to another request of the same command
    };
    // Returns the next answer to such a request, in the order of the recording. After the last answer it returns that
    // one again or, when `looping`, the first.
    Found next(const board_request &request, bool looping);

    size_t size() const { return answers.size(); }

private:
    struct RequestKey {
        uint32_t call, channel;
        std::string bytes;

        auto operator<=>(const RequestKey &) const = default;
    };
    // A Sequence holds answers in the order of the recording.
    struct Sequence {
        std::vector<size_t> answers;
        size_t at = 0;
    };

    // Returns the request with only its command's code as its bytes. Returns none when it carries no code.
    static std::optional<RequestKey> command_of(const RequestKey &request);
    const RecordedAnswer *step(Sequence &sequence, bool looping);

    std::vector<RecordedAnswer> answers;
    std::map<RequestKey, Sequence> by_bytes, by_command;
};

class Replay
{
public:
    // Serves on the sockets of `directory`, which get the permission bits `mode`, until destroyed. The recording must
    // outlive it.
    Replay(Recording &recording, bool looping, const std::string &directory, uint32_t mode);

    // Returns false when the sockets could not be opened. The log says why.
    bool serving() const { return service != nullptr; }

private:
    struct Stop {
        void operator()(board_service *service) const { board_service_stop(service); }
    };

    static void handle(void *context, const board_request *request, board_answer *answer);

    Recording &recording;
    const bool looping;
    std::unique_ptr<board_service, Stop> service;
};

} // namespace ponsim

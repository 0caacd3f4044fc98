// A FakeService notes the requests and answers them as the test says.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include <rapidjson/document.h>

#include "board/service.h"
#include "process.h"

struct Received {
    board_call call;
    uint32_t channel;
    uint32_t allowed;
    std::vector<uint8_t> record;

    uint32_t word(size_t offset) const;
    std::string text(size_t offset) const;
    std::string mac() const; // of a record of the PON channel
    // Returns a number by the name that the record, or the layout of its command, has for it.
    uint64_t number(std::string_view field) const;
};

class FakeService
{
public:
    using Handler = std::function<void(const board_request &, board_answer *)>;

    // Without a handler every request is answered with status 0 and nothing else.
    explicit FakeService(Handler handler = {});
    ~FakeService();
    FakeService(const FakeService &) = delete;
    FakeService &operator=(const FakeService &) = delete;

    // Runs ponctl against this service.
    Finished ponctl(std::vector<std::string> arguments, int output = -1, int input = -1, int error = -1) const;
    std::vector<Received> received() const;
    // Returns the requests that change something.
    std::vector<Received> settings() const;
    const std::string &folder() const { return directory; }

private:
    static void handle(void *context, const board_request *request, board_answer *answer);

    Handler handler;
    std::string directory;
    mutable std::mutex mutex;
    std::vector<Received> requests;
    board_service *service;
};

// These handlers answer with a status word, with a result database under its key, and with bytes.
FakeService::Handler status(uint32_t word);
FakeService::Handler result(uint32_t key, std::string json);
FakeService::Handler bytes(std::vector<uint8_t> answer);
// As result(), for rows of the command's view that have only the columns that the test is about.
FakeService::Handler rows(uint32_t key, const std::string &json);
// Returns a handler that answers with the bytes, and with no rows under the code of every command.
FakeService::Handler no_rows(std::vector<uint8_t> answer = {});
// Returns the rows with all columns of the command's view. Those that are not there are null where they may be, and
// otherwise zero, empty or false.
std::string whole_rows(uint32_t key, const std::string &json);
// Returns a handler that does what the handlers for the command codes do. Other commands get status 0 and nothing else.
FakeService::Handler by_command(std::map<uint32_t, FakeService::Handler> handlers);

// Returns a record of the PON channel for an answer, with these words by their offsets.
std::vector<uint8_t> pon_record(const std::map<size_t, uint32_t> &words);

// Returns the answer to a command with these numbers by the names of its layout. Scaled numbers are given as they are
// stored.
std::vector<uint8_t> answer_to(const char *command, const std::map<std::string, int64_t> &numbers);

// Parses a text that must be JSON.
rapidjson::Document parsed(const std::string &text);

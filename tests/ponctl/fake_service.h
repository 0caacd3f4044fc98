// A service of the test's own: notes the requests and answers them as the test says.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "board/service.h"
#include "process.h"

struct Received {
    board_call call;
    uint32_t channel;
    uint32_t allowed;
    std::vector<uint8_t> record;

    uint32_t word(size_t offset) const;
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
    Finished ponctl(std::vector<std::string> arguments) const;
    std::vector<Received> received() const;

private:
    static void handle(void *context, const board_request *request, board_answer *answer);

    Handler handler;
    std::string directory;
    mutable std::mutex mutex;
    std::vector<Received> requests;
    board_service *service;
};

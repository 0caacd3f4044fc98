#include "fake_service.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "catalogue.h"

uint32_t Received::word(size_t offset) const
{
    uint32_t value;
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

FakeService::FakeService(Handler answering) : handler(std::move(answering))
{
    char path[] = "/tmp/ponctl_test_XXXXXX";
    if (!mkdtemp(path)) throw std::runtime_error("no temporary folder");
    directory = path;
    board_service_config config{};
    config.module = catalogue::module;
    config.directory = directory.c_str();
    config.handler = handle;
    config.context = this;
    service = board_service_start(&config);
    if (!service) throw std::runtime_error("the service does not start");
}

FakeService::~FakeService()
{
    board_service_stop(service);
    std::filesystem::remove_all(directory);
}

void FakeService::handle(void *context, const board_request *request, board_answer *answer)
{
    auto &self = *static_cast<FakeService *>(context);
    const auto *bytes = static_cast<const uint8_t *>(request->data);
    {
        const std::lock_guard lock(self.mutex);
        self.requests.push_back({request->call, request->msg_type, request->allowed, {bytes, bytes + request->length}});
    }
    if (self.handler) self.handler(*request, answer);
}

std::vector<Received> FakeService::received() const
{
    const std::lock_guard lock(mutex);
    return requests;
}

Finished FakeService::ponctl(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"--socket-dir", directory});
    return ::ponctl(arguments);
}

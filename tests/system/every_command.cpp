#include "every_command.h"

#include <cstdint>
#include <cstring>

#include "board/datastore.h"
#include "board/ipc.h"
#include "catalogue.h"

std::vector<std::string> send_every_command()
{
    std::vector<std::string> answers;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const catalogue::Command *command = operation.command;
        const catalogue::Record &record = *operation.record;
        if (!command || !record.command) continue;
        std::string request(record.payload ? 40 : record.size, '\0');
        const uint32_t one = 1;
        for (size_t offset = 0; offset < 16; offset += sizeof one)
            std::memcpy(request.data() + offset, &one, sizeof one);
        std::memcpy(request.data() + record.command->offset, &command->code, sizeof command->code);

        char response[IPC_MAX_LENGTH];
        uint32_t received = sizeof response, status = 0;
        const auto length = static_cast<uint32_t>(request.size());
        const uint32_t channel = operation.channel->type;
        int32_t result = IPC_OK;
        if (operation.call == catalogue::Call::set)
            result = ipc_set_exec(catalogue::module, channel, request.data(), length, &status), received = 0;
        else if (operation.call == catalogue::Call::dgram_set)
            result = ipc_dgram_set_exec(catalogue::module, channel, request.data(), length, &status), received = 0;
        else
            result = (operation.call == catalogue::Call::get ? ipc_get_exec : ipc_dgram_get_exec)(
                catalogue::module, channel, request.data(), length, response, &received, &status);
        db_handle *database = db_from_shmem(command->code, UINT32_MAX);
        answers.push_back(std::string(operation.name) + " " + std::to_string(result) + " " + std::to_string(status) +
                          " " + std::string(response, received) + db_text(database, nullptr));
        db_free(database);
    }
    return answers;
}

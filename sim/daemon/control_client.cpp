#include "daemon/control_client.h"

#include <cstdint>
#include <stdexcept>

#include "board/ipc.h"
#include "board/service.h"
#include "control/control.h"
#include "daemon/console.h"

namespace ponsim
{

std::string send_control(const std::string &line)
{
    if (line.size() > IPC_MAX_LENGTH) throw ControlError("the command is too long");
    std::string said(IPC_MAX_LENGTH, '\0');
    auto length = static_cast<uint32_t>(said.size());
    uint32_t status = 0;
    const int32_t result = ipc_get_exec(control_module, control_channel, line.data(),
                                        static_cast<uint32_t>(line.size()), said.data(), &length, &status);
    const std::string failure = std::string(board_ipc_directory()) + ": " + ipc_strerror(result);
    if (result == IPC_ERR_NO_SERVICE) throw NoServiceError(failure);
    if (result != IPC_OK) throw std::runtime_error(failure);
    said.resize(length);
    if (status != 0) throw ControlError(said);
    return said;
}

} // namespace ponsim

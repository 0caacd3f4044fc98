// This file controls the simulation, as its user does.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "board/ipc.h"

// Executes a line such as "step 60" at the simulator that this process's library reaches.
inline void control(const std::string &line)
{
    constexpr uint32_t module = 106;
    constexpr uint32_t channel = 1;
    char said[IPC_MAX_LENGTH + 1] = {};
    uint32_t length = IPC_MAX_LENGTH;
    uint32_t status = 0;
    ASSERT_EQ(ipc_get_exec(module, channel, line.data(), static_cast<uint32_t>(line.size()), said, &length, &status),
              IPC_OK);
    ASSERT_EQ(status, 0u) << line << ": " << said;
}

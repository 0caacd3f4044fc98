// This file makes an OLT with as many ONUs as can be bound.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bsp_pon.h"
#include "view.h"

inline constexpr uint32_t ports = 16;
inline constexpr uint32_t onus_per_port = 128;
inline const std::vector<std::string> full_olt{"--seed", "9", "--arrivals", "128", "--silent", "0", "--speed", "0"};

// Binds the ONUs that wait at all ports to the ids from 0 on.
inline void bind_all()
{
    for (uint32_t port = 1; port <= ports; ++port) {
        const View waiting(
            [port](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, db); });
        ASSERT_EQ(waiting.count(), onus_per_port);
        for (uint32_t id = 0; id < onus_per_port; ++id)
            ASSERT_EQ(bsp_pon_bind_onu_spec_id(port, id, parse(waiting.text(id, "mac")).data(), "customer", nullptr, id,
                                               nullptr),
                      BSP_OK);
    }
}

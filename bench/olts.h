// This file has the OLTs of benchmarks.
#pragma once

#include <filesystem>
#include <list>
#include <memory>
#include <string>

#include "daemon/host.h"
#include "processes.h"
#include "scenario/scenario.h"

// Returns a scenario of OLTs with so many PON ports, each with so many bound ONUs. `start` is cold or registered.
inline ponsim::Scenario scenario_of(int olts, int ports, int onus, const char *start)
{
    const std::string text =
        std::string("start = \"") + start +
        "\"\n"
        "[service.bound]\nbound = true\n"
        "[[olt]]\nname = \"olt\"\ncount = " +
        std::to_string(olts) + "\n[[olt.port]]\nnumbers = \"1-" + std::to_string(ports) +
        "\"\n[[olt.port.onu]]\nname = \"onu\"\nservice = \"bound\"\ncount = " + std::to_string(onus) + "\n";
    return ponsim::read_scenario(text, "bench");
}

// Serves a scenario's OLTs from a child process, in folders that have their names.
inline Server serve(const ponsim::Scenario &scenario, const std::string &folder)
{
    std::filesystem::create_directories(folder);
    return Server(any_processor, [&](int ready) {
        const ponsim::Access access;
        ponsim::Timekeeper timekeeper;
        std::list<ponsim::Host> hosts;
        for (const ponsim::OltScenario &olt : scenario.olts) {
            ponsim::HostOptions options{.socket_dir = folder + "/" + olt.name};
            options.scenario = std::make_shared<const ponsim::OltScenario>(olt);
            hosts.emplace_back(options, access, timekeeper);
        }
        announce(ready);
        pause();
    });
}

// This file runs ponfront as a process of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "program.h"

class Ponfront : public Program
{
public:
    explicit Ponfront(std::vector<std::string> arguments);

    // Waits until it listens, and returns the port.
    uint16_t port();
};

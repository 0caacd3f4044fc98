// This file makes a command line for each operation.
#pragma once

#include <string>
#include <vector>

#include "catalogue.h"

struct AnyArguments {
    // This is the value of every number; records are then zero. When it is empty, numbers use all bytes of their type,
    // and records have some contents.
    std::string number = {};
    // The operation sends this command when its caller states the command. When it is null, the command is a number
    // like any other.
    const catalogue::Command *command = nullptr;
};

// Returns the words that call the operation with some value for each argument, according to its type.
std::vector<std::string> words_for(const catalogue::Operation &operation, const AnyArguments &any = {});

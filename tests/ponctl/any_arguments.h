// A command line for each operation.
#pragma once

#include <string>
#include <vector>

#include "catalogue.h"

struct AnyArguments {
    // Of every number; records are zero then. Empty: numbers that use all bytes of their type, and some record.
    std::string number = {};
    // What the operation is told to send, where its caller states the command; null: a number like any other.
    const catalogue::Command *command = nullptr;
};

// The words that call the operation with arguments of some value each, by their types.
std::vector<std::string> words_for(const catalogue::Operation &operation, const AnyArguments &any = {});

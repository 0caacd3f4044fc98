// This file returns the text of a UsageError.
#pragma once

#include <string>

#include "call/codec/errors.h"

// Returns the text of the UsageError that `action` throws, or "no error" when it throws none.
template <class Action>
std::string usage_error_of(Action action)
{
    try {
        action();
    } catch (const call::UsageError &error) {
        return error.what();
    }
    return "no error";
}

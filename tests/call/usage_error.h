// What a UsageError says.
#pragma once

#include <string>

#include "call/codec/errors.h"

// The text of the UsageError that `action` ends with; "no error" where it ends well.
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

// A Delivery is what a client gets for its message: the reply as it is sent, after faults have spoilt it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/faults.h"
#include "engine/message.h"

namespace ponsim
{

// It points to what the reply and the message hold.
struct Delivery {
    uint32_t status;
    std::string_view answer = {};
    uint32_t result_key = 0; // 0: there is no result
    std::string_view result = {};
    std::optional<std::string_view> file = {}; // comes in the place of a result
};

Delivery delivery_of(const Reply &reply, const Message &message);

// Completes a reply before it is sent: the name of the file in it is put into the answer, and faults spoil what they
// concern. How the answer is sent is left to the caller.
void complete(Reply &reply, const Message &message, std::span<const FaultCase> faults);

} // namespace ponsim

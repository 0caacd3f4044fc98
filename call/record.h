// Any record on any channel, whether or not an operation sends it.
#pragma once

#include "call/exchange.h"

namespace call
{

// A channel of a module of the board, known or not.
struct Destination {
    uint32_t module, channel;
};

// Sends a record. Of a get call: `preset` is how many bytes the answer may have, 0 for no bound, and `room` how many
// there is room for. Throws what the permission throws; nothing is sent then.
Exchange exchange_record(const Sender &sender, Permission &permission, const Destination &destination,
                         catalogue::Call call, const Bytes &request, uint32_t preset, size_t room);

bool has_answer(catalogue::Call call);

} // namespace call

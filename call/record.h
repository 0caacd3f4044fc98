// This file sends any record on any channel, whether or not an operation sends it.
#pragma once

#include "call/exchange.h"

namespace call
{

// A Destination is a channel of a module of the board, known or not.
struct Destination {
    uint32_t module, channel;
};

// Sends a record. For a get call, `preset` says how many bytes the answer may have (0: no bound), and `room` for how
// many bytes there is room. Throws what the permission throws; nothing is sent then.
Exchange exchange_record(const Sender &sender, Permission &permission, const Destination &destination,
                         catalogue::Call call, const Bytes &request, uint32_t preset, size_t room);

bool has_answer(catalogue::Call call);

} // namespace call

// What is sent, and how its exchange goes.
//
// The library returns one word, in which an IPC failure and a service status cannot always be told apart. So the
// program defines the four calls of the IPC library itself: each asks whether the request may be sent, notes it with
// its result, and passes the call on. Where nobody watches, nothing is sent.
#pragma once

#include <cstdint>
#include <string>

#include "call/codec/values.h"
#include "call/permission.h"
#include "catalogue.h"

namespace call
{

struct Exchange {
    bool made = false;                         // false: nothing was handed to the IPC library
    bool kept_back = false;                    // by the permission: nothing was sent
    int32_t result = 0;                        // the IPC library's
    uint32_t status = 0;                       // the service's, whatever the operation returns
    const catalogue::Record *record = nullptr; // what the request is
    const catalogue::Channel *channel = nullptr;
    catalogue::Call call = catalogue::Call::set;
    Bytes request;
    Bytes response; // as much as was received
};

// Who makes an exchange.
struct Sender {
    std::string doing;                               // for people: "calling bsp_pon_exec_set"
    const catalogue::Record *record;                 // of the request; null: unknown
    const catalogue::Operation *operation = nullptr; // null: none of the library's
};

// Lets the calling thread exchange records while it lives, as far as there is permission, and notes the last exchange.
// A thread has one at a time.
class Watch
{
public:
    Watch(const Sender &sender, Permission &permission);
    ~Watch();
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    // Throws what the permission threw.
    const Exchange &exchange() const;
};

// The last exchange that was noted on this thread.
const Exchange &last_exchange();

} // namespace call

// This file says what is sent, and how the exchange goes.
//
// The library returns one word, in which an IPC failure and a service status cannot always be told apart. So the
// program defines the four calls of the IPC library itself. Each of them asks whether the request may be sent, notes it
// with its result, and passes the call on. Without a Watch, nothing is sent.
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
    bool kept_back = false;                    // the permission kept the request back, and nothing was sent
    int32_t result = 0;                        // of the IPC library
    uint32_t status = 0;                       // of the service, whatever the operation returns
    const catalogue::Record *record = nullptr; // the record of the request
    const catalogue::Channel *channel = nullptr;
    catalogue::Call call = catalogue::Call::set;
    Bytes request;
    Bytes response; // the bytes that were received
};

// The Sender says who makes an exchange.
struct Sender {
    std::string doing;                               // for people: "calling bsp_pon_exec_set"
    const catalogue::Record *record;                 // the record of the request; null: unknown
    const catalogue::Operation *operation = nullptr; // null: no operation of the library
};

// A Watch lets the calling thread exchange records while it lives, if there is permission, and notes the last exchange.
// A thread has one Watch at a time.
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

// Returns the worst class of the commands that a request may be, because some commands share a code. A null command is
// one that the catalogue does not know: the worst of all, unless the request only asks for an answer.
catalogue::Class worst_impact(const catalogue::Command *command, catalogue::Call call);

// Returns the last exchange that was noted on this thread.
const Exchange &last_exchange();

} // namespace call

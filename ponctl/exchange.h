// What an operation sends, and how its exchange goes.
//
// The library returns one word, in which an IPC failure and a service status cannot always be told apart. So the
// program defines the four calls of the IPC library itself: each notes its request and result and passes the call on.
#pragma once

#include <cstdint>
#include <vector>

#include "catalogue.h"
#include "consent.h"
#include "values.h"

namespace ponctl
{

struct Exchange {
    bool made = false;                         // false: nothing was handed to the IPC library
    int32_t result = 0;                        // the IPC library's
    uint32_t status = 0;                       // the service's, whatever the operation returns
    const catalogue::Record *record = nullptr; // what the request is
    const catalogue::Channel *channel = nullptr;
    catalogue::Call call = catalogue::Call::set;
    Bytes request;
    Bytes response; // as much as was received
};

// Notes the last exchange made while it lives; only one lives at a time. Before a request that affects service is sent,
// it asks. In a dry run a request is kept, not sent, and counts as answered with nothing.
class Watch
{
public:
    explicit Watch(const Sender &sender);
    ~Watch();
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    // Throws the UsageError where it was refused.
    const Exchange &exchange() const;
};

// The last exchange that was noted.
const Exchange &last_exchange();
// The requests of a dry run since they were last taken.
std::vector<Exchange> take_kept_requests();

} // namespace ponctl

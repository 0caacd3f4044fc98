// A call of an operation by its name is a value: a Call says what is asked, and an Outcome says what came of it. Both
// have one form in JSON, which docs/call.md describes.
//
//     call::UpTo permission(catalogue::Class::read);
//     call::Call asked{.operation = "bsp_om_plat_diag_get", .arguments = {{"pon_port", "1"}}};
//     const call::Outcome outcome = call::perform(asked, permission);
//
// Nothing is printed, and nothing ends the process. A request that cannot be called as it is asked throws an Error.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/fwd.h>

#include "call/codec/member.h"
#include "call/codec/values.h"
#include "call/permission.h"

namespace call
{

struct Call {
    std::string id; // the caller's own id, which the outcome has, too
    std::string operation;
    std::vector<Assignment> arguments; // by name; a field of a record is named record.FIELD
    bool allow_long = false;           // texts and blocks may continue into the fields behind theirs
    std::optional<uint32_t> deadline;  // milliseconds, from 1 on; none: the deadline of the board's library

    bool operator==(const Call &) const = default;
};

// A Delivered is what an operation delivered through one of its arguments.
using Delivered = Member;

struct Outcome {
    std::string id;
    std::string operation;
    bool sent = false;      // false when the permission kept the request back, or the library made none
    int32_t ipc_result = 0; // of the exchange; the members below count when it is 0
    std::string ipc_text;
    uint32_t status = 0;     // the status that the operation returned
    std::string status_name; // empty: the status has no name
    std::string status_text;
    std::optional<std::vector<Delivered>> outputs; // none when the exchange failed

    bool operator==(const Outcome &) const = default;
};

// Calls the operation if there is permission. The permission is asked with the class of what would be sent. Throws a
// UsageError when the call is wrong, and whatever the permission throws; nothing was sent then. Any thread may call
// this function. Each thread has a connection of its own.
Outcome perform(const Call &asked, Permission &permission);

// Each function writes one line.
std::string to_json(const Call &asked);
std::string to_json(const Outcome &outcome);
// Each function throws a UsageError that says what is wrong with the text, and where.
Call call_from_json(std::string_view text);
Call call_from_json(const rapidjson::Value &object); // of a document that was read before
Outcome outcome_from_json(std::string_view text);

} // namespace call

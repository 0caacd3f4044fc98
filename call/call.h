// An operation called by its name, as a value: what is asked, and what came of it. Both have one form in JSON, which
// docs/call.md describes.
//
//     call::UpTo permission(catalogue::Class::read);
//     call::Call asked{.operation = "bsp_om_plat_diag_get", .arguments = {{"pon_port", "1"}}};
//     const call::Outcome outcome = call::perform(asked, permission);
//
// Nothing is printed, and nothing ends the process. What cannot be called as it is asked is an Error.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call/codec/values.h"
#include "call/permission.h"

namespace call
{

struct Call {
    std::string id; // the caller's own, which the outcome has too
    std::string operation;
    std::vector<Assignment> arguments; // by name; of a field of a record: record.FIELD
    bool allow_long = false;           // texts and blocks may run on into the fields behind theirs
    std::optional<uint32_t> deadline;  // milliseconds from 1; none: that of the board's library

    bool operator==(const Call &) const = default;
};

// What an operation delivered through one of its arguments.
struct Delivered {
    std::string name;
    std::string value; // JSON in one line

    bool operator==(const Delivered &) const = default;
};

struct Outcome {
    std::string id;
    std::string operation;
    bool sent = false;      // not so where the permission kept the request back, or the library made none
    int32_t ipc_result = 0; // of the exchange; the rest counts where it is 0
    std::string ipc_text;
    uint32_t status = 0;     // that the operation returned
    std::string status_name; // empty: it has none
    std::string status_text;
    std::optional<std::vector<Delivered>> outputs; // nothing where the exchange failed

    bool operator==(const Outcome &) const = default;
};

// Calls the operation, as far as there is permission: that is asked for with the class of what would be sent. Throws a
// UsageError where the call is wrong, and what the permission throws; nothing was sent then. Any thread may call; each
// exchanges on a connection of its own.
Outcome perform(const Call &asked, Permission &permission);

// One line each.
std::string to_json(const Call &asked);
std::string to_json(const Outcome &outcome);
// Each throws a UsageError that says what is wrong with the text, and where.
Call call_from_json(std::string_view text);
Outcome outcome_from_json(std::string_view text);

} // namespace call

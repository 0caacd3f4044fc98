// What is said to an OLT of a fleet, and what it answers: JSON in one line each, over a broker and over ssh.
//
//     {"id":"r7-north-3-91c2","deadline_ms":5000,"call":{"operation":"bsp_pon_get_port_info","arguments":{...}}}
//     {"id":"r7-north-3-91c2","deadline_ms":5000,"exchange":{"channel":"BSP_MSG_PON","call":"set","command":...}}
//     {"outcome":{...}}, {"exchanged":{...}} or {"problem":"busy","text":"16 calls are waiting"}
//
// A broker carries what belongs to a request as properties of MQTT 5: response topic, correlation data, message expiry.
// Over ssh a line has a frame around it, see frame.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "call/call.h"
#include "call/record_call.h"

namespace fleet
{

// A Request is a call of an operation, or an exchange of a record.
struct Request {
    // Of what is no mere reading: the same id is never executed twice at an OLT. 1 to 128 printable characters of
    // ASCII.
    std::string id;
    uint32_t deadline = 0; // milliseconds from when it was sent: not begun later; 0: none of its own
    std::variant<call::Call, call::RecordCall> what;
};

// A Problem says why nothing else can be said.
enum class Problem : uint8_t {
    wrong,       // the request is not understood, or the catalogue does not know what it asks for; nothing was done
    refused,     // it is not permitted; nothing was done
    busy,        // too many requests wait; nothing was done
    expired,     // its deadline passed before it was begun; nothing was done
    unknown,     // it was begun once and its end is not known: whoever asks reads what is so
    unavailable, // nobody answers for the OLT, or the journal cannot be written; nothing was done
};
std::string_view name_of(Problem problem);

struct Failure {
    Problem problem = Problem::wrong;
    std::string text; // for people

    bool operator==(const Failure &) const = default;
};

// An answer is one line: what a call or an exchange came to, or a failure.
std::string to_json(const Request &request);
std::string answer_of(const call::Outcome &outcome);
std::string answer_of(const call::RecordOutcome &outcome, const call::RecordCall &asked);
std::string answer_of(const Failure &failure);

// Throws a call::UsageError that says what is wrong.
Request request_from_json(std::string_view text);

// An Answer is one of these, and which one it is depends on what was asked.
using Answer = std::variant<Failure, call::Outcome, call::RecordOutcome>;
// Throws a call::UsageError when the text is no answer to this request.
Answer answer_from_json(std::string_view text, const Request &request);

// Returns the digest of what is asked, without id and deadline, as hexadecimal digits: equal requests have equal ones,
// on machines of every byte order.
std::string digest_of(const Request &request);

} // namespace fleet

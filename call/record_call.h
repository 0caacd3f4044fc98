// A RecordCall is an exchange of any record as a value, and a RecordOutcome is what came of it. Both have one form in
// JSON, of names and numbers, so that they can be exchanged with a machine of another byte order. docs/call.md
// describes it.
//
// A program that reaches an OLT through something else than the board's IPC library gives its thread a Carrier.
#pragma once

#include <string>
#include <string_view>

#include <rapidjson/fwd.h>

#include "call/exchange.h"

namespace call
{

struct RecordCall {
    const catalogue::Channel *channel = nullptr;
    catalogue::Call call = catalogue::Call::get;
    const catalogue::Record *record = nullptr; // of the request
    Bytes request;
    uint32_t preset = 0; // of a get call: how many bytes the answer may have; 0: no bound
};

// A ResultFile is what a service left in a file that its answer names.
struct ResultFile {
    std::string name; // empty: there is none
    Bytes content;
};

struct RecordOutcome {
    int32_t ipc_result = 0; // the members below count when it is 0
    uint32_t status = 0;    // the service's
    Bytes response;
    uint32_t result_key = 0;
    std::string result; // the result database under that key; empty: there is none
    ResultFile file;
};

// Makes the exchange if there is permission, and takes what the service left for the caller. Throws what the permission
// throws; nothing was sent then.
RecordOutcome perform(const RecordCall &asked, Permission &permission);

// Each function writes one line. An outcome is written for the call that it belongs to.
std::string to_json(const RecordCall &asked);
std::string to_json(const RecordOutcome &outcome, const RecordCall &asked);
// Each function throws a UsageError that says what is wrong with the text, and where: also when it names a channel, a
// command or a field that the catalogue does not know.
RecordCall record_call_from_json(std::string_view text);
RecordCall record_call_from_json(const rapidjson::Value &object); // of a document that was read before
RecordOutcome record_outcome_from_json(std::string_view text, const RecordCall &asked);

// A Carrier makes exchanges in place of the board's IPC library.
class Carrier
{
public:
    virtual ~Carrier() = default;
    // May throw an Error, which reaches whoever made the call.
    virtual RecordOutcome carry(const RecordCall &asked) = 0;
};

// All exchanges of the calling thread that are permitted go by a carrier while a Carriage lives.
class Carriage
{
public:
    explicit Carriage(Carrier &carrier);
    ~Carriage();
    Carriage(const Carriage &) = delete;
    Carriage &operator=(const Carriage &) = delete;

private:
    Carrier *before;
};

// Returns the carrier of the calling thread, or null when its exchanges go by the board's IPC library.
Carrier *carrier_of_thread();
// Keeps what the library will ask for after a carried exchange: the result database, and the file.
void keep_carried(RecordOutcome outcome);
// Forgets it.
void forget_carried();

} // namespace call

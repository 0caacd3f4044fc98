// The tool's commands. Each writes its result to `output`, says on standard error what went wrong with the exchange or
// what the service's status means, and returns the exit code. Wrong arguments are a UsageError.
#pragma once

#include <string>
#include <vector>

#include "arguments.h"
#include "errors.h"
#include "output.h"

namespace ponctl
{

// Lists the operations and local functions in which all of the words occur; one that is named exactly is shown whole.
ExitCode run_ops(const Output &output, const std::vector<std::string> &words);

// The page of an operation, or of a local function: everything that the catalogue says of it.
void print_page(const Output &output, const catalogue::Operation &operation);
void print_page(const Output &output, const catalogue::Function &function);

struct CallOptions {
    bool allow_long = false;
    bool dry_run = false; // show the request that the library builds, and send nothing
};

// Calls an operation with arguments of the form name=value, and shows all that it delivers.
ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  const CallOptions &options);

// Calls an operation for what it delivers: shows the rows of its database alone.
ExitCode run_list(const Output &output, const char *operation, const std::vector<std::string> &words);

struct RawOptions {
    std::string channel;             // name or number
    std::string call;                // set, get, dgram-set or dgram-get
    std::vector<std::string> fields; // FIELD=value
    std::string record;              // name; empty: the channel's
    std::string data;                // block with the record's first bytes; empty: zeros
    std::string preset;              // response bytes allowed; empty: the record's size
    bool allow_long = false;
    bool dry_run = false;
};

// Sends any record on any channel.
ExitCode run_raw(const Output &output, const RawOptions &options);

// Lists the exchanges of a trace file; `verbose`: with the fields of their records.
ExitCode run_trace(const Output &output, const std::string &file, bool verbose);

struct BindOptions {
    std::string port, mac, id, text_a, text_b, text_c, mode;
};

struct ReleaseOptions {
    std::string port, mac, id;
    bool offline = false;
    bool all = false;
    bool confirmed = false; // else one who sits at a terminal is asked before many ONUs are released
};

ExitCode run_onu_list(const Output &output, const std::string &port);
ExitCode run_onu_bind(const Output &output, const BindOptions &options);
ExitCode run_onu_release(const Output &output, const ReleaseOptions &options);
ExitCode run_port_list(const Output &output);

} // namespace ponctl

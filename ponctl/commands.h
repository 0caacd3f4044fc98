// The tool's commands. Each writes its result to `output`, says on standard error what went wrong with the exchange or
// what the service's status means, and returns the exit code. Wrong arguments are a UsageError.
#pragma once

#include <array>
#include <optional>
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
};

// Calls an operation with arguments of the form name=value, and shows all that it delivers.
ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  const CallOptions &options);

// The same for each ONU of a set, with the arguments that name the ONU filled in.
ExitCode run_call_each(const Output &output, const catalogue::Operation &operation, const std::string &onus,
                       const std::vector<std::string> &words, const CallOptions &options);

// Calls an operation for what it delivers: shows the rows of its database alone.
ExitCode run_list(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const TableStyle &style = {});

struct RawOptions {
    std::string channel;             // name or number
    std::string call;                // set, get, dgram-set or dgram-get
    std::vector<std::string> fields; // FIELD=value
    std::string record;              // name; empty: the channel's
    std::string data;                // block with the record's first bytes; empty: zeros
    std::string preset;              // response bytes allowed; empty: the record's size
    bool allow_long = false;
};

// Sends any record on any channel.
ExitCode run_raw(const Output &output, const RawOptions &options);

struct TraceOptions {
    std::string file;
    bool verbose = false;              // with the fields of the records
    std::string channel, command, pid; // only these exchanges; empty: all
    bool errors = false;               // only those that failed, or whose status is not zero
};

// Lists the exchanges of a recording.
ExitCode run_trace(const Output &output, const TraceOptions &options);

struct ReplayOptions {
    std::string file;
    bool verbose = false;             // show those that are equal, too
    std::vector<std::string> ignored; // fields and columns that may differ
    bool reads_only = false;
};

// Sends the requests of a recording to the service, and shows where its answers differ from those recorded.
ExitCode run_replay(const Output &output, const ReplayOptions &options);

struct IdSetOptions {
    std::vector<std::string> ids; // 1-5,7, also with blanks
    std::string words;            // four, with commas
    std::string last_id = "128";  // of the library's printer; this one prints no length
};

// Sets of ONU ids as texts: for people, and as the library prints them.
ExitCode run_idset(const Output &output, const IdSetOptions &options);

// The commands of daily work. A port that is left out stands for all.
struct OnuOptions {
    std::string port; // or a set, without an ONU
    std::string onu;  // id or MAC address
};

struct BindOptions {
    std::string port, mac, id, text_a, text_b, text_c, mode;
};

struct ReleaseOptions {
    std::string port, mac, id;
    bool offline = false;
    bool all = false;
};

struct ConfirmOptions : OnuOptions {
    std::string mode; // bind mode
    bool as_mode_says = false;
};

struct DescribeOptions {
    std::string port, id;            // or a set, and the text
    std::optional<std::string> text; // nothing with a set
};

struct RejectOptions {
    std::string port;
    std::vector<std::string> ids;
    std::string mac, text;
};

struct AllowOptions {
    std::string port, mac, ids;
};

ExitCode run_onu_list(const Output &output, const std::string &port);
ExitCode run_onu_show(const Output &output, const OnuOptions &options);
ExitCode run_onu_bind(const Output &output, const BindOptions &options);
ExitCode run_onu_release(const Output &output, const ReleaseOptions &options);
ExitCode run_onu_confirm(const Output &output, const ConfirmOptions &options);
ExitCode run_onu_describe(const Output &output, const DescribeOptions &options);
ExitCode run_onu_reject(const Output &output, const RejectOptions &options);
ExitCode run_onu_allow(const Output &output, const AllowOptions &options);
ExitCode run_port_list(const Output &output);

ExitCode run_blacklist(const Output &output, const std::string &port);
ExitCode run_blacklist_ids(const Output &output, const std::string &port);
ExitCode run_whitelist_ids(const Output &output, const std::string &port);

// The authentication modes from 0 on.
inline constexpr std::array<std::string_view, 4> auth_modes{"mac", "loid", "loid-password", "hybrid"};

struct AuthOptions {
    std::string port, mode, loid, password;
};

ExitCode run_auth_show(const Output &output, const std::string &port);
ExitCode run_auth_set(const Output &output, const AuthOptions &options);
ExitCode run_auth_remove(const Output &output, const AuthOptions &options);

struct AlarmOptions : OnuOptions {
    std::string alarm; // code
};

ExitCode run_alarm_list(const Output &output, const AlarmOptions &options);
ExitCode run_alarm_clear(const Output &output, const AlarmOptions &options);

} // namespace ponctl

// ponctl ops, call, raw, trace, replay and idset: all that the library can.
#include <algorithm>

#include "cli/cli.h"
#include "command_line/parse.h"
#include "report.h"
#include "words.h"

namespace ponctl
{

void add_ops(Command &app)
{
    Command &ops = app.add("ops", "Lists the operations and local functions, or shows one of them");
    std::vector<std::string> &words = ops.runs(run_ops);
    ops.argument("WORD", &words,
                 "words that must all occur in name, brief, family, class or command; an operation's whole name "
                 "shows its page",
                 "OPERATION");
}

namespace
{

struct CallLine : CallOptions {
    std::string operation;          // its name, or the first of the words for it
    std::vector<std::string> words; // its arguments, and further words for it
    std::string onus;
    bool help = false;
};

// The operation that the words name, the first of them or all without `=` together, which are taken off them.
const catalogue::Operation &take_operation(std::vector<std::string> &words)
{
    const auto is_assignment = [](const std::string &word) { return word.find('=') != word.npos; };
    const auto assignments = std::stable_partition(words.begin(), words.end(), std::not_fn(is_assignment));
    const std::vector<std::string> names(words.begin(), assignments);
    if (names.empty()) throw UsageError("OPERATION: missing; 'ponctl ops' lists the operations");
    if (catalogue::find_operation(names.front())) {
        words.erase(words.begin());
        return *catalogue::find_operation(names.front());
    }
    // A wrong name is not searched for words where nothing is found.
    const bool is_wrong_name = names.size() == 1 && find_operations(names).empty();
    const catalogue::Operation &operation = is_wrong_name ? named_operation(names.front()) : chosen_operation(names);
    note("calling " + std::string(operation.name));
    words.erase(words.begin(), assignments);
    return operation;
}

ExitCode run_call_line(const Output &output, const CallLine &line)
{
    std::vector<std::string> words = line.words;
    if (!line.operation.empty()) words.insert(words.begin(), line.operation);
    const catalogue::Operation &operation = take_operation(words);
    if (!line.help && line.onus.empty()) return run_call(output, operation, words, line);
    if (!line.help) return run_call_each(output, operation, line.onus, words, line);
    print_page(output, operation);
    return exit_success;
}

} // namespace

void add_call(Command &app)
{
    Command &call = app.add("call", "Calls an operation; 'ponctl ops' lists them");
    CallLine &line = call.runs(run_call_line);
    call.options.clear(); // its help is of two kinds
    call.option("-h,--help", &line.help, "print this help; with an OPERATION, the page of that operation");
    call.argument("OPERATION", &line.operation,
                  "name of the operation, or words that occur in no other, as for 'ponctl ops'");
    call.argument("ARGUMENT", &line.words, "its arguments, as name=value, in any order");
    call.option("--onus", &line.onus,
                "call it for each of these ONUs in place of the arguments that name one: 1/3-17,20 or 1/all", "SET");
    call.option("--allow-long", &line.allow_long,
                "let texts and blocks that are longer than their field run on into the fields behind it");
    call.check = [&line] {
        if (line.help && line.operation.empty()) throw command_line::ShowHelp();
    };
}

void add_raw(Command &app)
{
    Command &raw = app.add("raw", "Sends any record on any channel");
    RawOptions &options = raw.runs(run_raw);
    raw.argument("CHANNEL", &options.channel, "name or number of the channel, as BSP_MSG_PON or 232").is_required();
    raw.argument("CALL", &options.call, "set, get, dgram-set or dgram-get", "set|get|dgram-set|dgram-get")
        .is_required();
    raw.argument("FIELD=VALUE", &options.fields, "fields of the record; all others are zero");
    raw.option("--record", &options.record, "another record than the channel's own", "RECORD");
    raw.option("--data", &options.data, "first bytes of the record: hex:0011..., text:..., or @FILE", "BLOCK");
    raw.option("--preset", &options.preset, "response bytes allowed; 0 states no bound (default: the record's size)",
               "N");
    raw.option("--allow-long", &options.allow_long,
               "let texts and blocks that are longer than their field run on into the fields behind it");
}

void add_trace(Command &app)
{
    Command &trace =
        app.add("trace", "Lists what went over the IPC, from a file of BOARD_IPC_TRACE or ponsim --record");
    TraceOptions &options = trace.runs(run_trace);
    trace.argument("FILE", &options.file, "the recording").is_required();
    trace.option("-v,--verbose", &options.verbose, "show the records too");
    trace.option("--channel", &options.channel, "only exchanges on this channel, by name or number", "CHANNEL");
    trace.option("--command", &options.command, "only those with this command, by name or code", "COMMAND");
    trace.option("--pid", &options.pid, "only those of this process", "PID");
    trace.option("--errors", &options.errors, "only those that failed, or whose status is not zero");
}

void add_replay(Command &app)
{
    Command &replay = app.add("replay", "Sends the requests of a recording and shows where the answers differ");
    ReplayOptions &options = replay.runs(run_replay);
    replay.argument("FILE", &options.file, "the recording, of BOARD_IPC_TRACE or ponsim --record").is_required();
    replay.option("-v,--verbose", &options.verbose, "show the exchanges that are equal, too");
    replay.option("--ignore", &options.ignored, "a field or column that may differ; may be repeated", "FIELD");
    replay.option("--reads-only", &options.reads_only, "send only the requests that change nothing");
}

void add_idset(Command &app)
{
    Command &idset = app.add("idset", "Prints a set of ONU ids in every form; asks no service");
    IdSetOptions &options = idset.runs(run_idset);
    idset.argument("SET", &options.ids, "ids from 0 to 127 and runs of them in any order, as 1-5,7,9-12");
    idset.option("--words", &options.words, "the set as its four words, as 0x3e,0,0,0; ids 0 to 31 in the first",
                 "W,W,W,W");
    idset.option("--last-id", &options.last_id,
                 "last id for the library's printer ont_id_res_str; 128, which is no id, when left out", "N");
}

} // namespace ponctl

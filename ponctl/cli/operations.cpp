// ponctl ops, call, raw, trace, replay and idset: all that the library can.
#include <algorithm>

#include "cli/cli.h"
#include "report.h"
#include "words.h"

namespace ponctl
{

void add_ops(CLI::App &app, Command &command)
{
    CLI::App *ops = app.add_subcommand("ops", "Lists the operations and local functions, or shows one of them");
    auto words = std::make_shared<std::vector<std::string>>();
    ops->add_option("WORD", *words,
                    "words that must all occur in name, brief, family, class or command; an operation's whole name "
                    "shows its page")
        ->type_name("OPERATION");
    runs(ops, command, words, run_ops);
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

} // namespace

void add_call(CLI::App &app, Command &command)
{
    CLI::App *call = app.add_subcommand("call", "Calls an operation; 'ponctl ops' lists them");
    auto line = std::make_shared<CallLine>();
    call->set_help_flag();
    call->add_flag("-h,--help", line->help, "print this help; with an OPERATION, the page of that operation");
    call->add_option("OPERATION", line->operation,
                     "name of the operation, or words that occur in no other, as for 'ponctl ops'");
    call->add_option("ARGUMENT", line->words, "its arguments, as name=value, in any order");
    call->add_option("--onus", line->onus,
                     "call it for each of these ONUs in place of the arguments that name one: 1/3-17,20 or 1/all")
        ->type_name("SET");
    call->add_flag("--allow-long", line->allow_long,
                   "let texts and blocks that are longer than their field run on into the fields behind it");
    call->callback([line, &command] {
        if (line->help && line->operation.empty()) throw CLI::CallForHelp();
        command = [line](const Output &output) {
            std::vector<std::string> words = line->words;
            if (!line->operation.empty()) words.insert(words.begin(), line->operation);
            const catalogue::Operation &operation = take_operation(words);
            if (!line->help && line->onus.empty()) return run_call(output, operation, words, *line);
            if (!line->help) return run_call_each(output, operation, line->onus, words, *line);
            print_page(output, operation);
            return exit_success;
        };
    });
}

void add_raw(CLI::App &app, Command &command)
{
    CLI::App *raw = app.add_subcommand("raw", "Sends any record on any channel");
    auto options = std::make_shared<RawOptions>();
    raw->add_option("CHANNEL", options->channel, "name or number of the channel, as BSP_MSG_PON or 232")->required();
    raw->add_option("CALL", options->call, "set, get, dgram-set or dgram-get")
        ->required()
        ->type_name("set|get|dgram-set|dgram-get");
    raw->add_option("FIELD=VALUE", options->fields, "fields of the record; all others are zero");
    raw->add_option("--record", options->record, "another record than the channel's own")->type_name("RECORD");
    raw->add_option("--data", options->data, "first bytes of the record: hex:0011..., text:..., or @FILE")
        ->type_name("BLOCK");
    raw->add_option("--preset", options->preset,
                    "response bytes allowed; 0 states no bound (default: the record's size)")
        ->type_name("N");
    raw->add_flag("--allow-long", options->allow_long,
                  "let texts and blocks that are longer than their field run on into the fields behind it");
    runs(raw, command, options, run_raw);
}

void add_trace(CLI::App &app, Command &command)
{
    CLI::App *trace =
        app.add_subcommand("trace", "Lists what went over the IPC, from a file of BOARD_IPC_TRACE or ponsim --record");
    auto options = std::make_shared<TraceOptions>();
    trace->add_option("FILE", options->file, "the recording")->required();
    trace->add_flag("-v,--verbose", options->verbose, "show the records too");
    trace->add_option("--channel", options->channel, "only exchanges on this channel, by name or number")
        ->type_name("CHANNEL");
    trace->add_option("--command", options->command, "only those with this command, by name or code")
        ->type_name("COMMAND");
    trace->add_option("--pid", options->pid, "only those of this process")->type_name("PID");
    trace->add_flag("--errors", options->errors, "only those that failed, or whose status is not zero");
    runs(trace, command, options, run_trace);
}

void add_replay(CLI::App &app, Command &command)
{
    CLI::App *replay =
        app.add_subcommand("replay", "Sends the requests of a recording and shows where the answers differ");
    auto options = std::make_shared<ReplayOptions>();
    replay->add_option("FILE", options->file, "the recording, of BOARD_IPC_TRACE or ponsim --record")->required();
    replay->add_flag("-v,--verbose", options->verbose, "show the exchanges that are equal, too");
    replay->add_option("--ignore", options->ignored, "a field or column that may differ; may be repeated")
        ->type_name("FIELD")
        ->allow_extra_args(false);
    replay->add_flag("--reads-only", options->reads_only, "send only the requests that change nothing");
    runs(replay, command, options, run_replay);
}

void add_idset(CLI::App &app, Command &command)
{
    CLI::App *idset = app.add_subcommand("idset", "Prints a set of ONU ids in every form; asks no service");
    auto options = std::make_shared<IdSetOptions>();
    idset->add_option("SET", options->ids, "ids from 0 to 127 and runs of them in any order, as 1-5,7,9-12");
    idset->add_option("--words", options->words, "the set as its four words, as 0x3e,0,0,0; ids 0 to 31 in the first")
        ->type_name("W,W,W,W");
    idset
        ->add_option("--last-id", options->last_id,
                     "last id for the library's printer ont_id_res_str; 128, which is no id, when left out")
        ->type_name("N");
    runs(idset, command, options, run_idset);
}

} // namespace ponctl

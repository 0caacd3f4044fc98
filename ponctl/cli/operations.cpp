// ponctl ops, call, raw, trace, replay and idset: all that the library can.
#include "cli/cli.h"
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

void add_call(CLI::App &app, Command &command)
{
    struct Options : CallOptions {
        std::string operation;
        std::vector<std::string> words;
        bool help = false;
    };
    CLI::App *call = app.add_subcommand("call", "Calls an operation; 'ponctl ops' lists them");
    auto options = std::make_shared<Options>();
    call->set_help_flag();
    call->add_flag("-h,--help", options->help, "print this help; with an OPERATION, the page of that operation");
    call->add_option("OPERATION", options->operation, "name of the operation");
    call->add_option("ARGUMENT", options->words, "its arguments, as name=value, in any order");
    call->add_flag("--allow-long", options->allow_long,
                   "let texts and blocks that are longer than their field run on into the fields behind it");
    call->add_flag("--dry-run", options->dry_run, "show the request that would be sent, and send nothing");
    call->callback([call, options, &command] {
        if (options->operation.empty()) {
            if (!options->help) throw UsageError("OPERATION: missing; 'ponctl ops' lists the operations");
            throw CLI::CallForHelp();
        }
        const catalogue::Operation &operation = named_operation(options->operation);
        command = [options, &operation](const Output &output) {
            if (!options->help) return run_call(output, operation, options->words, *options);
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
    raw->add_flag("--dry-run", options->dry_run, "show the request that would be sent, and send nothing");
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
    replay->add_flag("--yes", options->confirmed, "do not ask before requests are sent that change something");
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

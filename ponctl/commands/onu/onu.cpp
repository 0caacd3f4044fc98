// ponctl onu shows and manages the ONUs of a port, as the OLT has them.
#include "commands/onu/onu.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "board/datastore.h"
#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/operand_help.h"
#include "cli/program.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/preview.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

constexpr const char *onu_help = "ONU id on the port, or MAC address, unless PORT has the ids";

// A port that is left out stands for all ports.
struct OnuOptions {
    std::string port; // a port, or a set without an ONU
    std::string onu;  // id or MAC address of an ONU
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
    std::string port, id;            // a port and an id, or a set and the text
    std::optional<std::string> text; // none when a set is given
};

constexpr const char *view_operation = "bsp_pon_exec_get_json_";
constexpr size_t longest_text = 127;
constexpr const char *which_onu = "ONU: missing; give an ONU id or MAC address, or a set as 1/3-17 in place of PORT";
constexpr size_t longest_short_text = 63; // for the second and third bind text

std::string mode_of(const std::string &text)
{
    return text.empty() ? "0" : std::to_string(parse_number("--mode", text));
}

ExitCode release_many(const Output &output, const ReleaseOptions &options)
{
    if (!options.id.empty() || !options.mac.empty() || (options.all && options.offline))
        throw UsageError("--all and --offline stand alone: not with each other, not with --id or --mac");
    const std::string which = options.all ? "all ONUs" : "all offline ONUs";
    const char *operation = options.all ? "bsp_pon_no_bind_onu_all" : "bsp_pon_no_bind_offline_onu_all";
    ask_about(operation, "releasing " + which + " of port " + options.port,
              options.all ? Effect::offline : Effect::setting, parse_number("PORT", options.port),
              [&options](const Hit &onu) { return onu.id && (options.all || onu.state == "offline"); });
    return run_call(output, operation, words_of({{"pon_port", options.port}}));
}

// Binds an ONU, and looks up which id the service chose for it.
ExitCode bind_and_look_up(const Output &output, const std::vector<std::string> &words, const BindOptions &options)
{
    const Invocation bound("bsp_pon_bind_onu_auto_id", words, consent());
    if (!bound.good()) return report(bound);
    const Invocation found("bsp_pon_get_w_onu_by_mac", words_of({{"pon_port", options.port}, {"mac", options.mac}}),
                           consent());
    if (!found.good()) {
        complain("the ONU is bound, but its id could not be looked up");
        return report(found);
    }
    const Reading reading = found.response();
    const uint32_t id =
        load_word(field_bytes(*catalogue::find_field(reading.record->fields, "onu_id"), reading.bytes).data());
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        json.member("operation", bound.operation().name);
        json.status(bound.status());
        json.key("outputs");
        json->StartObject();
        json.member("onu_id", id);
        json->EndObject();
        json->EndObject();
    } else if (output.format == Format::hex) {
        print_bytes(output, reading.bytes, &reading);
    } else {
        std::fprintf(output.stream, "bound to ONU id %u\n", id);
    }
    return exit_success;
}

// Returns the row of an ONU among those that the service found, or nothing when there is none.
std::optional<uint32_t> row_of(const db_handle *database, const OnuName &onu)
{
    const char *column = onu.id.empty() ? "mac" : "onu_id";
    for (uint32_t row = 0; row < db_rows(database); ++row) {
        const char *cell = db_get_text(database, row, column);
        if (cell && (onu.id.empty() ? onu.mac : onu.id) == cell) return row;
    }
    return std::nullopt;
}

// A Known holds all that is known of one ONU.
struct Known {
    const Invocation *information;
    uint32_t row;
    const Invocation *configuration; // null when the ONU is not bound; then the UNI ports are null, too
    const Invocation *uni_ports;
};

// `name` names the ONU when there are several.
void write_onu(Json &json, const std::optional<Known> &known, const std::string *name)
{
    json->StartObject();
    if (name) json.member("onu", *name);
    if (!known) {
        for (const char *key : {"information", "configuration", "uni_ports"})
            json.null(key);
        json->EndObject();
        return;
    }
    const Known &onu = *known;
    json.key("information");
    json.row(onu.information->database(), onu.row);
    if (onu.configuration && db_rows(onu.configuration->database()) > 0) {
        json.key("configuration");
        json.row(onu.configuration->database(), 0);
    } else {
        json.null("configuration");
    }
    json.key("uni_ports");
    json.document(onu.uni_ports ? onu.uni_ports->database() : nullptr);
    json->EndObject();
}

void print_onu(const Output &output, const Known &onu)
{
    const auto heading = [&output](const char *title) {
        if (output.headings && output.format == Format::table) std::fprintf(output.stream, "%s\n", title);
    };
    print_row(output, onu.information->database(), onu.row, onu.information->view());
    if (onu.configuration && db_rows(onu.configuration->database()) > 0) {
        heading("\nConfiguration");
        print_row(output, onu.configuration->database(), 0, onu.configuration->view());
    }
    if (onu.uni_ports && onu.uni_ports->database()) {
        heading("\nUNI ports");
        print_database(output, onu.uni_ports->database(), onu.uni_ports->view());
    }
}

std::vector<std::string> words_for(const std::string &port, const OnuName &onu)
{
    return words_of({{"record.pon_port", port}, {"record.onu_id", onu.id}, {"record.onu_mac", onu.mac}});
}

// Asks for all that is known of an ONU. Returns nothing when there is no such ONU, or when the service does not answer
// the first question. The calls stay in `calls`.
std::optional<Known> ask_for(const std::string &port, const OnuName &onu, std::deque<Invocation> &calls)
{
    const Invocation &information = calls.emplace_back("bsp_pon_get_onu_info", words_for(port, onu), consent());
    if (!information.good()) return std::nullopt;
    expect_answer(information);
    // For id 0 the service returns the whole port, because 0 selects nothing.
    const std::optional<uint32_t> row = row_of(information.database(), onu);
    if (!row) return std::nullopt;
    const char *const bound_port = db_get_text(information.database(), *row, "pon_port");
    const char *const bound_id = db_get_text(information.database(), *row, "onu_id");
    if (!bound_port || !bound_id) return Known{&information, *row, nullptr, nullptr};
    const auto place = words_of({{"pon_port", bound_port}, {"onu_id", bound_id}});
    const Invocation &configuration = calls.emplace_back("bsp_pon_onu_get_cfg_info", place, consent());
    const Invocation &uni_ports = calls.emplace_back("bsp_pon_onu_get_portcfg_info", place, consent());
    return Known{&information, *row, &configuration, &uni_ports};
}

// Shows what is known of one ONU, or an array or titled parts for several. Reports the ONUs that do not exist.
ExitCode show(const Output &output, const std::vector<std::pair<std::string, std::optional<Known>>> &onus, bool several)
{
    std::optional<Json> json;
    if (output.format == Format::json && (several || onus.front().second)) json.emplace(output.stream);
    if (json && several) (*json)->StartArray();
    ExitCode code = exit_success;
    bool first = true;
    for (const auto &[name, onu] : onus) {
        if (json) write_onu(*json, onu, several ? &name : nullptr);
        if (!onu) {
            code = exit_status;
            continue;
        }
        if (!json && several && output.headings)
            std::fprintf(output.stream, "%sONU %s\n", first ? "" : "\n", name.c_str());
        if (!json) print_onu(output, *onu);
        first = false;
    }
    if (json && several) (*json)->EndArray();
    return code;
}

ExitCode show_each(const Output &output, const OnuSet &set)
{
    std::vector<std::pair<std::string, std::optional<Known>>> onus;
    ExitCode missing = exit_success;
    const ExitCode code = for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            onus.emplace_back(onu.name(), ask_for(std::to_string(onu.port), {std::to_string(onu.id), {}}, calls));
        },
        [&](const std::deque<OnuCalls> &asked, bool several) {
            missing = show(output, onus, several || output.format == Format::json);
            for (size_t index = 0; index < onus.size(); ++index)
                if (!onus[index].second && asked[index].calls.front().good())
                    complain("there is no ONU " + onus[index].first);
        });
    return std::max(code, missing);
}

ExitCode run_onu_list(const Output &output, const std::string &port)
{
    return run_list(output, view_operation,
                    words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", port_of(port)}}));
}

ExitCode run_onu_show(const Output &output, const OnuOptions &options)
{
    if (const auto set = set_in_place_of(options.port, options.onu)) return show_each(output, *set);
    if (options.onu.empty()) throw UsageError(which_onu);
    const OnuName name = onu_of(options.onu);
    const std::string port = port_of(options.port);
    if (port == "0" && !name.id.empty())
        throw UsageError("PORT: 0 stands for all ports; there, name the ONU by its MAC address");
    std::deque<Invocation> calls;
    const std::optional<Known> onu = ask_for(port, name, calls);
    if (!onu && calls.front().good()) {
        complain("there is no ONU " + options.onu + " at port " + port);
        return exit_status;
    }
    ExitCode code = exit_success;
    if (onu) code = show(output, {{options.onu, onu}}, false);
    for (const Invocation &called : calls)
        code = std::max(code, report(called));
    return code;
}

ExitCode run_onu_bind(const Output &output, const BindOptions &options)
{
    check_text("--text-a", options.text_a, longest_text);
    check_text("--text-b", options.text_b, longest_short_text);
    check_text("--text-c", options.text_c, longest_short_text);
    parse_mac("MAC", options.mac);
    const auto words = words_of({{"pon_port", port_of(options.port)},
                                 {"onu_id", number_word("--id", options.id)},
                                 {"mac", options.mac},
                                 {"text_a", options.text_a},
                                 {"text_b", options.text_b},
                                 {"value", mode_of(options.mode)},
                                 {"text_c", options.text_c}});
    return options.id.empty() ? bind_and_look_up(output, words, options)
                              : run_call(output, "bsp_pon_bind_onu_spec_id", words);
}

// Asks before one ONU is released, which the options name by its id or by its MAC address.
void ask_about_release(const char *operation, const ReleaseOptions &options)
{
    const uint32_t port = parse_number("PORT", options.port);
    if (!options.id.empty())
        return ask_about(operation, "releasing ONU " + options.port + "/" + options.id, Effect::offline,
                         OnuSet{port, parse_idset("--id", options.id)});
    const std::string mac = text::mac_text(parse_mac("--mac", options.mac));
    ask_about(operation, "releasing ONU " + mac + " of port " + options.port, Effect::offline, port,
              [&mac](const Hit &onu) { return onu.mac == mac; });
}

ExitCode run_onu_release(const Output &output, const ReleaseOptions &options)
{
    const bool named = !(options.id + options.mac).empty();
    if (const auto set = set_in_place_of(options.port)) {
        if (named || options.all || options.offline)
            throw UsageError("--id, --mac, --offline and --all: not beside a set; " + options.port +
                             " names the ONUs already");
        constexpr const char *operation = "bsp_pon_no_bind_onu_spec_id";
        ask_about(operation, "releasing " + describe_onu_set(*set), Effect::offline, *set);
        return tell_onus(output, *set, operation);
    }
    if (options.all || options.offline) return release_many(output, options);
    if (!named) throw UsageError("which ONU? give --id N, --mac MAC or both, --offline or --all, or a set as PORT/IDS");
    const char *operation = options.mac.empty()  ? "bsp_pon_no_bind_onu_spec_id"
                            : options.id.empty() ? "bsp_pon_no_bind_onu_by_mac"
                                                 : "bsp_pon_no_bind_onu_spec_id_and_mac";
    // Without anybody to ask, the request itself is refused, and says for what.
    if (may_ask()) ask_about_release(operation, options);
    return run_call(output, operation,
                    words_of({{"pon_port", options.port}, {"onu_id", options.id}, {"mac", options.mac}}));
}

ExitCode run_onu_confirm(const Output &output, const ConfirmOptions &options)
{
    constexpr const char *operation = "bsp_pon_confirm_onu";
    const auto how =
        words_of({{"onu.arg_byte16", options.as_mode_says ? "1" : "0"}, {"onu.arg_word36", mode_of(options.mode)}});
    if (auto set = set_in_place_of(options.port, options.onu)) {
        set->but_0 = true;
        ask_about(operation, "letting in " + describe_onu_set(*set), Effect::setting, *set);
        return tell_onus(output, *set, operation, how);
    }
    if (options.onu.empty()) throw UsageError(which_onu);
    const OnuName onu = onu_but_0_of(options.onu);
    auto words = words_of({{"pon_port", port_of(options.port)}, {"onu.onu_id", onu.id}, {"onu.onu_mac", onu.mac}});
    words.insert(words.end(), how.begin(), how.end());
    return run_call(output, operation, words);
}

ExitCode run_onu_describe(const Output &output, const DescribeOptions &options)
{
    constexpr const char *operation = "bsp_pon_onu_description";
    // A set stands for PORT and ID, so the text is then the second word.
    const auto set = set_in_place_of(options.port);
    if (set ? options.text.has_value() : !options.text.has_value())
        throw UsageError("give PORT ID TEXT, or PORT/IDS TEXT; the TEXT is one word of the command line, quoted");
    const std::string &text = set ? options.id : *options.text;
    check_text("TEXT", text, longest_text);
    const auto change = [&text](const Hit &onu) -> std::vector<Change> {
        if (onu.description == text) return {};
        return {{"description", onu.description, text}};
    };
    if (set) {
        ask_about(operation, "describing " + describe_onu_set(*set), Effect::setting, *set, change);
        return tell_onus(output, *set, operation, {"text=" + text});
    }
    const std::string port = port_of(options.port), id = std::to_string(parse_number("ID", options.id, max_onu_id));
    const OnuSet one{parse_number("PORT", port), parse_idset("ID", id)};
    ask_about(operation, "describing " + describe_onu_set(one), Effect::setting, one, change);
    auto words = words_of({{"pon_port", port}, {"onu_id", id}});
    words.push_back("text=" + text);
    return run_call(output, operation, words);
}

// Each ONU is rebooted by itself, so that one that is offline does not hold up the others.
ExitCode run_onu_reboot(const Output &output, const std::string &text)
{
    static constexpr const char *operation = "bsp_pon_reboot_onu_batch";
    const OnuSet set = parse_onu_set(text);
    ask_about(operation, "rebooting " + describe_onu_set(set), Effect::offline, set);
    return for_each_onu(
        set,
        [](const Onu &onu, std::deque<Invocation> &calls) {
            calls.emplace_back(
                operation,
                words_of({{"record.pon_port", std::to_string(onu.port)}, {"record.onu_set", std::to_string(onu.id)}}),
                consent());
        },
        statuses_on(output));
}

std::string brief_of(const char *operation, const char *argument)
{
    for (const catalogue::Argument &known : catalogue::find_operation(operation)->arguments)
        if (known.name == argument) return std::string(known.brief);
    return {};
}

void add_list(Command &onu)
{
    Command &list = onu.add("list", "Lists the ONUs: the bound ones, and those that wait");
    std::string &port = list.runs(run_onu_list);
    list.argument("PORT", &port, "PON port number; all ports when left out");
    list.footer =
        "Some of them: ponctl onu list --where \"state=offline and description~'main street'\" --sort pon_port";
}

void add_show(Command &onu)
{
    Command &show = onu.add("show", "Shows all that is known of ONUs");
    OnuOptions &options = show.runs(run_onu_show);
    show.argument("PORT", &options.port, std::string(port_or_set_help) + "; 0 looks for a MAC address on all ports")
        .is_required();
    show.argument("ONU", &options.onu, onu_help);
}

void add_bind(Command &onu)
{
    constexpr const char *binding = "bsp_pon_bind_onu_spec_id";
    Command &bind = onu.add("bind", "Binds an ONU to an ONU id");
    BindOptions &options = bind.runs(run_onu_bind);
    bind.argument("PORT", &options.port, brief_of(binding, "pon_port")).is_required();
    bind.argument("MAC", &options.mac, brief_of(binding, "mac")).is_required();
    bind.option("--id", &options.id,
                brief_of(binding, "onu_id") + "; when left out, the service picks one, which is printed", "ID");
    bind.option("--text-a", &options.text_a, brief_of(binding, "text_a"), "TEXT");
    bind.option("--text-b", &options.text_b, brief_of(binding, "text_b"), "TEXT");
    bind.option("--text-c", &options.text_c, brief_of(binding, "text_c"), "TEXT");
    bind.option("--mode", &options.mode, brief_of(binding, "value") + "; 0 when left out", "N");
}

void add_release(Command &onu)
{
    Command &release = onu.add("release", "Releases the binding of an ONU, or of many");
    ReleaseOptions &options = release.runs(run_onu_release);
    release.argument("PORT", &options.port, port_or_set_help).is_required();
    release.option("--id", &options.id, "ONU id on the port", "ID");
    release.option("--mac", &options.mac, "MAC address", "MAC");
    release.option("--offline", &options.offline, "release all offline ONUs of the port");
    release.option("--all", &options.all, "release all ONUs of the port");
}

void add_confirm(Command &onu)
{
    Command &confirm = onu.add("confirm", "Lets in ONUs that wait, or that authentication turned away");
    ConfirmOptions &options = confirm.runs(run_onu_confirm);
    confirm.argument("PORT", &options.port, port_or_set_help).is_required();
    confirm.argument("ONU", &options.onu, std::string(onu_help) + "; id 0 cannot be given, for there it means none");
    confirm.option("--mode", &options.mode, "bind mode of one that is bound by this; 0 when left out", "N");
    confirm.option("--as-mode-says", &options.as_mode_says,
                   "the port's authentication goes on to concern the ONU; else it is exempt from now on");
}

void add_reboot(Command &onu)
{
    Command &reboot = onu.add("reboot", "Reboots ONUs; their users are without service meanwhile");
    std::string &set = reboot.runs(run_onu_reboot);
    reboot.argument("SET", &set, onu_set_help).is_required();
}

void add_describe(Command &onu)
{
    Command &describe = onu.add("describe", "Describes bound ONUs in a text");
    DescribeOptions &options = describe.runs(run_onu_describe);
    describe.argument("PORT", &options.port, port_or_set_help).is_required();
    describe.argument("ID", &options.id, "ONU id on the port; left out where PORT has the ids").is_required();
    describe.argument("TEXT", &options.text, "the description, at most 127 characters; an empty one removes it");
}

} // namespace

void add_onu(Program &program)
{
    Command &onu = program.tree.add(
        "onu",
        "Lists, shows, explains, binds, releases, confirms, reboots and rejects ONUs; asks and sets remote ONUs");
    for (const auto add : {add_list, add_find, add_why, add_show, add_bind, add_release, add_confirm, add_reboot,
                           add_describe, add_blacklisting, add_import})
        add(onu);
    add_watch(program, onu);
    Command &image = add_queries(onu);
    add_settings(onu, image);
    for (const char *name : {"list", "find", "ports", "vlan"})
        add_list_options(program, onu, name);
}

} // namespace ponctl

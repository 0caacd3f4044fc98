// ponctl onu.
#include "cli/cli.h"

namespace ponctl
{
namespace
{

constexpr const char *port_help = "PON port number";
constexpr const char *port_or_set_help = "PON port number; or with the ids of its ONUs, as 1/3-17,20 or 1/all";
constexpr const char *onu_help = "ONU id on the port, or MAC address, unless PORT has the ids";

std::string brief_of(const char *operation, const char *argument)
{
    for (const catalogue::Argument &known : catalogue::find_operation(operation)->arguments)
        if (known.name == argument) return std::string(known.brief);
    return {};
}

void add_list(CLI::App &onu, Command &command)
{
    CLI::App *list = onu.add_subcommand("list", "Lists the ONUs: the bound ones, and those that wait");
    auto port = std::make_shared<std::string>();
    list->add_option("PORT", *port, "PON port number; all ports when left out");
    runs(list, command, port, run_onu_list);
}

void add_show(CLI::App &onu, Command &command)
{
    CLI::App *show = onu.add_subcommand("show", "Shows all that is known of ONUs");
    auto options = std::make_shared<OnuOptions>();
    show->add_option("PORT", options->port, std::string(port_or_set_help) + "; 0 looks for a MAC address on all ports")
        ->required();
    show->add_option("ONU", options->onu, onu_help);
    runs(show, command, options, run_onu_show);
}

void add_bind(CLI::App &onu, Command &command)
{
    constexpr const char *binding = "bsp_pon_bind_onu_spec_id";
    CLI::App *bind = onu.add_subcommand("bind", "Binds an ONU to an ONU id");
    auto options = std::make_shared<BindOptions>();
    bind->add_option("PORT", options->port, brief_of(binding, "pon_port"))->required();
    bind->add_option("MAC", options->mac, brief_of(binding, "mac"))->required();
    bind->add_option("--id", options->id,
                     brief_of(binding, "onu_id") + "; when left out, the service picks one, which is printed")
        ->type_name("ID");
    bind->add_option("--text-a", options->text_a, brief_of(binding, "text_a"))->type_name("TEXT");
    bind->add_option("--text-b", options->text_b, brief_of(binding, "text_b"))->type_name("TEXT");
    bind->add_option("--text-c", options->text_c, brief_of(binding, "text_c"))->type_name("TEXT");
    bind->add_option("--mode", options->mode, brief_of(binding, "value") + "; 0 when left out")->type_name("N");
    runs(bind, command, options, run_onu_bind);
}

void add_release(CLI::App &onu, Command &command)
{
    CLI::App *release = onu.add_subcommand("release", "Releases the binding of an ONU, or of many");
    auto options = std::make_shared<ReleaseOptions>();
    release->add_option("PORT", options->port, port_or_set_help)->required();
    release->add_option("--id", options->id, "ONU id on the port")->type_name("ID");
    release->add_option("--mac", options->mac, "MAC address")->type_name("MAC");
    release->add_flag("--offline", options->offline, "release all offline ONUs of the port");
    release->add_flag("--all", options->all, "release all ONUs of the port");
    runs(release, command, options, run_onu_release);
}

void add_confirm(CLI::App &onu, Command &command)
{
    CLI::App *confirm = onu.add_subcommand("confirm", "Lets in ONUs that wait, or that authentication turned away");
    auto options = std::make_shared<ConfirmOptions>();
    confirm->add_option("PORT", options->port, port_or_set_help)->required();
    confirm->add_option("ONU", options->onu, std::string(onu_help) + "; id 0 cannot be given, for there it means none");
    confirm->add_option("--mode", options->mode, "bind mode of one that is bound by this; 0 when left out")
        ->type_name("N");
    confirm->add_flag("--as-mode-says", options->as_mode_says,
                      "the port's authentication goes on to concern the ONU; else it is exempt from now on");
    runs(confirm, command, options, run_onu_confirm);
}

void add_describe(CLI::App &onu, Command &command)
{
    CLI::App *describe = onu.add_subcommand("describe", "Describes bound ONUs in a text");
    auto options = std::make_shared<DescribeOptions>();
    describe->add_option("PORT", options->port, port_or_set_help)->required();
    describe->add_option("ID", options->id, "ONU id on the port; left out where PORT has the ids")->required();
    describe->add_option("TEXT", options->text, "the description, at most 127 characters; an empty one removes it");
    runs(describe, command, options, run_onu_describe);
}

void add_reject(CLI::App &onu, Command &command)
{
    CLI::App *reject =
        onu.add_subcommand("reject", "Puts ONUs on the black list: they are released and stay away until allowed");
    auto options = std::make_shared<RejectOptions>();
    reject->add_option("PORT", options->port, port_or_set_help)->required();
    reject->add_option("ID", options->ids, "ONU ids of bound ONUs, as 5 or 1-5,7, unless PORT has them");
    reject->add_option("--mac", options->mac, "MAC address of any ONU, in place of ids")->type_name("MAC");
    reject->add_option("--text", options->text, "text of the entry, with --mac")->type_name("TEXT");
    runs(reject, command, options, run_onu_reject);
}

void add_allow(CLI::App &onu, Command &command)
{
    CLI::App *allow = onu.add_subcommand("allow", "Takes ONUs off the black list");
    auto options = std::make_shared<AllowOptions>();
    allow->add_option("PORT", options->port, port_help)->required();
    allow->add_option("MAC", options->mac, "MAC address of the ONU");
    allow->add_option("--ids", options->ids, "in place of MAC: ids on the black list, as 1-5,7")->type_name("IDS");
    runs(allow, command, options, run_onu_allow);
}

} // namespace

void add_onu(CLI::App &app, Command &command)
{
    CLI::App *onu = app.add_subcommand(
        "onu", "Lists, shows, binds, releases, confirms and rejects ONUs; asks and sets remote ONUs");
    onu->require_subcommand(1);
    for (const auto add : {add_list, add_show, add_bind, add_release, add_confirm, add_describe, add_reject, add_allow})
        add(*onu, command);
    add_remote(*onu, command);
}

} // namespace ponctl

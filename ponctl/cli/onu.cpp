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

void add_list(Command &onu)
{
    Command &list = onu.add("list", "Lists the ONUs: the bound ones, and those that wait");
    std::string &port = list.runs(run_onu_list);
    list.argument("PORT", &port, "PON port number; all ports when left out");
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

void add_describe(Command &onu)
{
    Command &describe = onu.add("describe", "Describes bound ONUs in a text");
    DescribeOptions &options = describe.runs(run_onu_describe);
    describe.argument("PORT", &options.port, port_or_set_help).is_required();
    describe.argument("ID", &options.id, "ONU id on the port; left out where PORT has the ids").is_required();
    describe.argument("TEXT", &options.text, "the description, at most 127 characters; an empty one removes it");
}

void add_reject(Command &onu)
{
    Command &reject = onu.add("reject", "Puts ONUs on the black list: they are released and stay away until allowed");
    RejectOptions &options = reject.runs(run_onu_reject);
    reject.argument("PORT", &options.port, port_or_set_help).is_required();
    reject.argument("ID", &options.ids, "ONU ids of bound ONUs, as 5 or 1-5,7, unless PORT has them");
    reject.option("--mac", &options.mac, "MAC address of any ONU, in place of ids", "MAC");
    reject.option("--text", &options.text, "text of the entry, with --mac", "TEXT");
}

void add_allow(Command &onu)
{
    Command &allow = onu.add("allow", "Takes ONUs off the black list");
    AllowOptions &options = allow.runs(run_onu_allow);
    allow.argument("PORT", &options.port, port_help).is_required();
    allow.argument("MAC", &options.mac, "MAC address of the ONU");
    allow.option("--ids", &options.ids, "in place of MAC: ids on the black list, as 1-5,7", "IDS");
}

} // namespace

void add_onu(Command &app)
{
    Command &onu =
        app.add("onu", "Lists, shows, binds, releases, confirms and rejects ONUs; asks and sets remote ONUs");
    for (const auto add : {add_list, add_show, add_bind, add_release, add_confirm, add_describe, add_reject, add_allow})
        add(onu);
    add_remote(onu);
}

} // namespace ponctl

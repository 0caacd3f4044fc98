// ponctl sla sets the bandwidth of each ONU, upstream and downstream.
#include <deque>
#include <utility>

#include "call/invocation.h"
#include "cli/operand_help.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/preview.h"
#include "results/sections.h"
#include "results/sla.h"

namespace ponctl
{
namespace
{

constexpr const char *onu_help = "ONU ids on the port, as 5 or 3-17,20, unless PORT has them";

struct SlaOptions {
    std::string port; // a port, or a set without an ONU
    std::string onu;  // ids; empty: all ONUs of the port
};

struct SlaSetOptions : SlaOptions {
    Sla sla;
};

// Returns the ONUs that a command line names: by a set, or by a port and an id.
OnuSet onus_of(const SlaOptions &options)
{
    if (const auto set = set_in_place_of(options.port, options.onu)) return *set;
    if (options.onu.empty()) throw UsageError("ID: missing; give an ONU id, or a set as 1/3-17 in place of PORT");
    return {parse_number("PORT", options.port), parse_idset("ID", options.onu)};
}

ExitCode show_onus(const Output &output, const OnuSet &set)
{
    return for_each_onu(
        set,
        [](const Onu &onu, std::deque<Invocation> &calls) {
            if (calls.emplace_back(sla_up_get, sla_place_of(onu), consent()).good())
                calls.emplace_back(sla_down_get, sla_place_of(onu), consent());
        },
        [&output](const std::deque<OnuCalls> &asked, bool several) {
            std::vector<Subject> subjects;
            for (const OnuCalls &of_onu : asked) {
                Subject &subject = subjects.emplace_back(of_onu.onu);
                subject.sections.push_back({"upstream", "Upstream", &of_onu.calls.front()});
                if (of_onu.calls.size() > 1) subject.sections.push_back({"downstream", "Downstream", &of_onu.calls[1]});
            }
            if (several || output.format == Format::json)
                print_each(output, subjects, true);
            else if (subjects.front().sections.size() > 1)
                print_sections(output, subjects.front().sections, true);
        });
}

ExitCode run_sla_show(const Output &output, const SlaOptions &options)
{
    if (!options.onu.empty() || set_in_place_of(options.port)) return show_onus(output, onus_of(options));
    const auto port = words_of({{"pon_port", port_of(options.port)}});
    const Invocation summary("bsp_pon_onu_sla_all_get", port, consent());
    if (!summary.good()) return report(summary);
    const Invocation up("bsp_pon_onu_sla_get_web", port, consent());
    const Invocation down("bsp_pon_onu_sla_down_get_web", port, consent());
    return show(output,
                {{"summary", "Port", &summary}, {"upstream", "Upstream", &up}, {"downstream", "Downstream", &down}});
}

ExitCode run_sla_set(const Output &output, const SlaSetOptions &options)
{
    const Sla &sla = options.sla;
    if (!sla.has_upstream() && sla.down.empty())
        throw UsageError("nothing to set; give one of --fixed, --assured, --max, --priority, --weight and --down-max");
    // All errors are found before the user is asked.
    check_sla(sla, {"--fixed", "--assured", "--max", "--priority", "--weight", "--down-max"});
    const OnuSet set = onus_of(options);
    ask_about("bsp_pon_onu_sla_config", "changing the bandwidth of " + describe_onu_set(set), Effect::setting, set);
    return for_each_onu(
        set, [&](const Onu &onu, std::deque<Invocation> &calls) { set_sla(onu, sla, calls); }, statuses_on(output));
}

ExitCode run_sla_clear(const Output &output, const SlaOptions &options)
{
    const OnuSet set = onus_of(options);
    ask_about("bsp_pon_onu_sla_config", "giving " + describe_onu_set(set) + " the default bandwidth", Effect::setting,
              set);
    return for_each_onu(
        set, [](const Onu &onu, std::deque<Invocation> &calls) { clear_sla(onu, calls); }, statuses_on(output));
}

} // namespace

void add_sla(Program &program)
{
    Command &sla = program.tree.add("sla", "Shows and sets the bandwidth of ONUs");

    Command &show = sla.add("show", "Shows the bandwidth of a port and its ONUs, or of some ONUs");
    SlaOptions &shown = show.runs(run_sla_show);
    show.argument("PORT", &shown.port, port_or_set_help).is_required();
    show.argument("ID", &shown.onu, "ONU ids on the port; when left out, the port and all its ONUs");

    Command &set = sla.add("set", "Sets the bandwidth of ONUs");
    SlaSetOptions &options = set.runs(run_sla_set);
    set.argument("PORT", &options.port, port_or_set_help).is_required();
    set.argument("ID", &options.onu, onu_help);
    set.option("--fixed", &options.sla.fixed, "upstream kbit/s that are granted whether used or not", "KBITS");
    set.option("--assured", &options.sla.assured, "upstream kbit/s that are granted when asked for", "KBITS");
    set.option("--max", &options.sla.maximum, "upstream kbit/s that are never exceeded", "KBITS");
    set.option("--priority", &options.sla.priority, "of what is left: 0 lowest to 7 highest", "N");
    set.option("--weight", &options.sla.weight, "share among those of one priority", "N");
    set.option("--down-max", &options.sla.down, "downstream kbit/s that are never exceeded; 0 is the default again",
               "KBITS");
    set.footer = "What is left out stays as it is.";

    Command &clear = sla.add("clear", "Gives ONUs the default bandwidth again");
    SlaOptions &cleared = clear.runs(run_sla_clear);
    clear.argument("PORT", &cleared.port, port_or_set_help).is_required();
    clear.argument("ID", &cleared.onu, onu_help);
}

} // namespace ponctl

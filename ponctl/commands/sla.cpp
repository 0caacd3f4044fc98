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
#include "results/sections.h"

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
    std::string fixed, assured, maximum, priority, weight, down; // those that are left out do not change
};

constexpr const char *up_get = "bsp_pon_onu_sla_get";
constexpr const char *down_get = "bsp_pon_onu_sla_down_get";

std::vector<std::string> place_of(const Onu &onu)
{
    return words_of({{"pon_port", std::to_string(onu.port)}, {"onu_id", std::to_string(onu.id)}});
}

// Returns the ONUs that a command line names: by a set, or by a port and an id.
OnuSet onus_of(const SlaOptions &options)
{
    if (const auto set = set_in_place_of(options.port, options.onu)) return *set;
    if (options.onu.empty()) throw UsageError("ID: missing; give an ONU id, or a set as 1/3-17 in place of PORT");
    return {parse_number("PORT", options.port), parse_idset("ID", options.onu)};
}

// Returns the words of a record that is sent to an ONU.
std::vector<std::string> to_onu(const Onu &onu, std::initializer_list<Assignment> fields)
{
    std::vector<std::string> words =
        words_of({{"record.plat_port", std::to_string(onu.port)}, {"record.plat_arg4", std::to_string(onu.id)}});
    for (const std::string &word : words_of(fields))
        words.push_back(word);
    return words;
}

const Invocation &set_down(const Onu &onu, const std::string &maximum, std::deque<Invocation> &calls)
{
    return calls.emplace_back("bsp_pon_onu_sla_down_config", to_onu(onu, {{"record.maximum", maximum}}), consent());
}

// Sets the given parts of the upstream SLA, and keeps the rest as it is.
const Invocation &set_up(const Onu &onu, const SlaSetOptions &options, std::deque<Invocation> &calls)
{
    const Invocation &current = calls.emplace_back(up_get, place_of(onu), consent());
    if (!current.good()) return current;
    expect_answer(current);
    const Reading sla = current.block();
    const auto given_or_kept = [&sla](const char *field, const std::string &given) {
        return given.empty() ? field_digits(sla, field) : given;
    };
    return calls.emplace_back("bsp_pon_onu_sla_config",
                              to_onu(onu, {{"record.fixed", given_or_kept("fixed", options.fixed)},
                                           {"record.assured", given_or_kept("assured", options.assured)},
                                           {"record.maximum", given_or_kept("maximum", options.maximum)},
                                           {"record.priority", given_or_kept("priority", options.priority)},
                                           {"record.weight", given_or_kept("weight", options.weight)}}),
                              consent());
}

ExitCode show_onus(const Output &output, const OnuSet &set)
{
    return for_each_onu(
        set,
        [](const Onu &onu, std::deque<Invocation> &calls) {
            if (calls.emplace_back(up_get, place_of(onu), consent()).good())
                calls.emplace_back(down_get, place_of(onu), consent());
        },
        [&output](const std::deque<OnuCalls> &asked, bool several) {
            std::vector<Subject> subjects;
            for (const OnuCalls &of_onu : asked) {
                Subject &subject = subjects.emplace_back(of_onu.onu);
                subject.sections.push_back({"upstream", "Upstream", &of_onu.calls.front()});
                if (of_onu.calls.size() > 1) subject.sections.push_back({"downstream", "Downstream", &of_onu.calls[1]});
            }
            if (several)
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
    const bool up = !(options.fixed + options.assured + options.maximum + options.priority + options.weight).empty();
    if (!up && options.down.empty())
        throw UsageError("nothing to set; give one of --fixed, --assured, --max, --priority, --weight and --down-max");
    // All errors are found before the user is asked.
    for (const auto &[name, value] : {std::pair{"--fixed", options.fixed},
                                      {"--assured", options.assured},
                                      {"--max", options.maximum},
                                      {"--priority", options.priority},
                                      {"--weight", options.weight},
                                      {"--down-max", options.down}})
        number_word(name, value);
    const OnuSet set = onus_of(options);
    ask_before("bsp_pon_onu_sla_config", "changing the bandwidth of " + describe_onu_set(set));
    return for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            if (up && !set_up(onu, options, calls).good()) return;
            if (!options.down.empty()) set_down(onu, options.down, calls);
        },
        statuses_on(output));
}

ExitCode run_sla_clear(const Output &output, const SlaOptions &options)
{
    const OnuSet set = onus_of(options);
    ask_before("bsp_pon_onu_sla_config", "giving " + describe_onu_set(set) + " the default bandwidth");
    return for_each_onu(
        set,
        [](const Onu &onu, std::deque<Invocation> &calls) {
            // Zeros remove an SLA.
            if (calls.emplace_back("bsp_pon_onu_sla_config", to_onu(onu, {}), consent()).good())
                set_down(onu, "0", calls);
        },
        statuses_on(output));
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
    set.option("--fixed", &options.fixed, "upstream kbit/s that are granted whether used or not", "KBITS");
    set.option("--assured", &options.assured, "upstream kbit/s that are granted when asked for", "KBITS");
    set.option("--max", &options.maximum, "upstream kbit/s that are never exceeded", "KBITS");
    set.option("--priority", &options.priority, "of what is left: 0 lowest to 7 highest", "N");
    set.option("--weight", &options.weight, "share among those of one priority", "N");
    set.option("--down-max", &options.down, "downstream kbit/s that are never exceeded; 0 is the default again",
               "KBITS");
    set.footer = "What is left out stays as it is.";

    Command &clear = sla.add("clear", "Gives ONUs the default bandwidth again");
    SlaOptions &cleared = clear.runs(run_sla_clear);
    clear.argument("PORT", &cleared.port, port_or_set_help).is_required();
    clear.argument("ID", &cleared.onu, onu_help);
}

} // namespace ponctl

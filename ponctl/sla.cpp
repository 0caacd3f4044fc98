// ponctl sla: the bandwidth of each ONU, upstream and downstream.
#include "daily.h"
#include "platform.h"
#include "sections.h"

namespace ponctl
{
namespace
{

std::string onu_id(const std::string &text)
{
    return std::to_string(parse_number("ID", text, max_onu_id));
}

// The words of a record that goes to an ONU.
std::vector<std::string> to_onu(const SlaOptions &options, std::initializer_list<Assignment> fields)
{
    std::vector<std::string> words =
        words_of({{"record.plat_port", port_of(options.port)}, {"record.plat_arg4", onu_id(options.onu)}});
    for (const std::string &word : words_of(fields))
        words.push_back(word);
    return words;
}

ExitCode set_down(const SlaOptions &options, const std::string &maximum)
{
    return Called("bsp_pon_onu_sla_down_config", to_onu(options, {{"record.maximum", maximum}})).report();
}

// Sets what is given of the upstream SLA, and keeps the rest as it is.
ExitCode set_up(const SlaSetOptions &options)
{
    const Called current("bsp_pon_onu_sla_get",
                         words_of({{"pon_port", port_of(options.port)}, {"onu_id", onu_id(options.onu)}}));
    if (!current.good()) return current.report();
    const Reading sla = current.block();
    const auto given_or_kept = [&sla](const char *field, const std::string &given) {
        return given.empty() ? field_digits(sla, field) : given;
    };
    return Called("bsp_pon_onu_sla_config",
                  to_onu(options, {{"record.fixed", given_or_kept("fixed", options.fixed)},
                                   {"record.assured", given_or_kept("assured", options.assured)},
                                   {"record.maximum", given_or_kept("maximum", options.maximum)},
                                   {"record.priority", given_or_kept("priority", options.priority)},
                                   {"record.weight", given_or_kept("weight", options.weight)}}))
        .report();
}

std::string place_of(const SlaOptions &options)
{
    return "ONU " + onu_id(options.onu) + " of port " + port_of(options.port);
}

} // namespace

ExitCode run_sla_show(const Output &output, const SlaOptions &options)
{
    const std::string port = port_of(options.port);
    if (options.onu.empty()) {
        const Called summary("bsp_pon_onu_sla_all_get", words_of({{"pon_port", port}}));
        if (!summary.good()) return summary.report();
        const Called up("bsp_pon_onu_sla_get_web", words_of({{"pon_port", port}}));
        const Called down("bsp_pon_onu_sla_down_get_web", words_of({{"pon_port", port}}));
        return show(
            output,
            {{"summary", "Port", &summary}, {"upstream", "Upstream", &up}, {"downstream", "Downstream", &down}});
    }
    const auto place = words_of({{"pon_port", port}, {"onu_id", onu_id(options.onu)}});
    const Called up("bsp_pon_onu_sla_get", place);
    if (!up.good()) return up.report();
    const Called down("bsp_pon_onu_sla_down_get", place);
    return show(output, {{"upstream", "Upstream", &up}, {"downstream", "Downstream", &down}});
}

ExitCode run_sla_set(const Output &, const SlaSetOptions &options)
{
    const bool up = !(options.fixed + options.assured + options.maximum + options.priority + options.weight).empty();
    if (!up && options.down.empty())
        throw UsageError("nothing to set; give one of --fixed, --assured, --max, --priority, --weight and --down-max");
    // All that can be wrong is found before anyone is asked.
    for (const auto &[name, value] : {std::pair{"--fixed", options.fixed},
                                      {"--assured", options.assured},
                                      {"--max", options.maximum},
                                      {"--priority", options.priority},
                                      {"--weight", options.weight},
                                      {"--down-max", options.down}})
        number_word(name, value);
    ask(options.confirmed, "changing the bandwidth of " + place_of(options));
    if (up)
        if (const ExitCode code = set_up(options); code != exit_success) return code;
    return options.down.empty() ? exit_success : set_down(options, options.down);
}

ExitCode run_sla_clear(const Output &, const SlaSetOptions &options)
{
    ask(options.confirmed, "giving " + place_of(options) + " the default bandwidth");
    // Zeros take an SLA away.
    const Called up("bsp_pon_onu_sla_config", to_onu(options, {}));
    return up.good() ? set_down(options, "0") : up.report();
}

} // namespace ponctl

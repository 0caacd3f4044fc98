#include "results/sla.h"

#include <utility>

#include "call/codec/meaning.h"
#include "output/consent.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

// Returns the words of a record that is sent to an ONU.
std::vector<std::string> to_onu(const Onu &onu, std::initializer_list<Assignment> fields)
{
    std::vector<std::string> words =
        words_of({{"record.plat_port", std::to_string(onu.port)}, {"record.plat_arg4", std::to_string(onu.id)}});
    for (const std::string &word : words_of(fields))
        words.push_back(word);
    return words;
}

bool set_down(const Onu &onu, const std::string &maximum, std::deque<Invocation> &calls)
{
    return calls.emplace_back("bsp_pon_onu_sla_down_config", to_onu(onu, {{"record.maximum", maximum}}), consent())
        .good();
}

// Returns what becomes different of an SLA. Of the downstream one nobody was asked how it stands.
std::vector<Change> changes_of(const Sla &wanted, const Reading *up)
{
    std::vector<Change> changes;
    for (const auto &[field, given] : {std::pair<const char *, const std::string &>{"fixed", wanted.fixed},
                                       {"assured", wanted.assured},
                                       {"maximum", wanted.maximum},
                                       {"priority", wanted.priority},
                                       {"weight", wanted.weight}})
        if (const std::string before = up ? field_digits(*up, field) : ""; !given.empty() && given != before)
            changes.push_back({field, before, given});
    if (!wanted.down.empty()) changes.push_back({"down", {}, wanted.down});
    return changes;
}

// Sets the given parts of the upstream SLA, and keeps the rest as it is.
bool set_up(const Onu &onu, const Sla &wanted, std::deque<Invocation> &calls)
{
    const Invocation &current = calls.emplace_back(sla_up_get, sla_place_of(onu), looking());
    if (!current.good()) return false;
    const Reading sla = current.block();
    const auto given_or_kept = [&sla](const char *field, const std::string &given) {
        return given.empty() ? field_digits(sla, field) : given;
    };
    expect_changes(changes_of(wanted, &sla));
    return calls
        .emplace_back("bsp_pon_onu_sla_config",
                      to_onu(onu, {{"record.fixed", given_or_kept("fixed", wanted.fixed)},
                                   {"record.assured", given_or_kept("assured", wanted.assured)},
                                   {"record.maximum", given_or_kept("maximum", wanted.maximum)},
                                   {"record.priority", given_or_kept("priority", wanted.priority)},
                                   {"record.weight", given_or_kept("weight", wanted.weight)}}),
                      consent())
        .good();
}

// An empty value is not given.
void check_value(std::string_view name, const char *command, const char *field, const std::string &value)
{
    if (value.empty()) return;
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command(command));
    const catalogue::Field &known = *catalogue::find_field(layout.fields, field);
    const uint32_t number = parse_number(name, value);
    check_allowed(name, known, {reinterpret_cast<const uint8_t *>(&number), sizeof number});
}

} // namespace

void check_sla(const Sla &sla, const std::array<std::string_view, 6> &names)
{
    constexpr const char *up = "BSP_CMD_SLA_SET";
    check_value(names[0], up, "fixed", sla.fixed);
    check_value(names[1], up, "assured", sla.assured);
    check_value(names[2], up, "maximum", sla.maximum);
    check_value(names[3], up, "priority", sla.priority);
    check_value(names[4], up, "weight", sla.weight);
    check_value(names[5], "BSP_CMD_SLA_DOWN_SET", "maximum", sla.down);
}

std::vector<std::string> sla_place_of(const Onu &onu)
{
    return words_of({{"pon_port", std::to_string(onu.port)}, {"onu_id", std::to_string(onu.id)}});
}

bool set_sla(const Onu &onu, const Sla &sla, std::deque<Invocation> &calls)
{
    if (!sla.has_upstream()) expect_changes(changes_of(sla, nullptr));
    if (sla.has_upstream() && !set_up(onu, sla, calls)) return false;
    return sla.down.empty() || set_down(onu, sla.down, calls);
}

void clear_sla(const Onu &onu, std::deque<Invocation> &calls)
{
    // Zeros remove an SLA.
    if (calls.emplace_back("bsp_pon_onu_sla_config", to_onu(onu, {}), consent()).good()) set_down(onu, "0", calls);
}

} // namespace ponctl

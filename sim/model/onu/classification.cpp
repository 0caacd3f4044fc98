#include "model/onu/classification.h"

#include <algorithm>
#include <array>
#include <map>

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace ponsim
{
namespace
{

namespace at = layout::onu_classification;

enum Action : uint8_t { remove_rules = 0, add_rules = 1, remove_all = 2 };
enum Operator : uint8_t { equal = 1, at_least = 4, always = 7 }; // the codes between these compare, too

constexpr uint32_t most_rules = 8;
constexpr uint32_t greatest_queue = 7;
constexpr uint32_t greatest_mark = 7;
constexpr uint32_t no_mark = 255;
constexpr uint32_t entry_size = 8;
constexpr uint32_t value_size = 6;
constexpr uint32_t head_size = 3; // bytes of a rule without its entries that its length counts

// These are the conditions of a rule, in their order.
constexpr std::array fields{at::field_a, at::field_b, at::field_c, at::field_d};
constexpr std::array values{at::value_a, at::value_b, at::value_c, at::value_d};
constexpr std::array operators{at::operator_a, at::operator_b, at::operator_c, at::operator_d};

// These are the widths of what a condition may compare, by its code.
constexpr uint32_t widths[] = {48, 48, 3, 12, 16, 32, 32, 8, 6, 8, 16, 16}; // bits

struct Condition {
    uint8_t field;
    std::array<uint8_t, value_size> value;
    uint8_t op;

    bool is_good() const
    {
        if (field >= std::size(widths) || op > always) return false;
        uint64_t number = 0;
        for (const uint8_t byte : value)
            number = number << 8 | byte;
        return op < equal || op > at_least || number >> widths[field] == 0;
    }
};

struct Rule {
    uint8_t queue;
    uint8_t mark;
    std::vector<Condition> conditions;
};

using Rules = std::map<uint8_t, Rule>; // by precedence

// Reads a rule. `block` must not hold more rules or entries than there can be.
Rule rule_at(const OnuBlock &block, uint32_t number)
{
    Rule rule{block.get(at::queue[number]), block.get(at::mark[number]), {}};
    for (uint32_t entry = 0; entry < block.get(at::entries[number]); ++entry) {
        rule.conditions.push_back(
            {block.get(fields[entry][number]), block.get(values[entry][number]), block.get(operators[entry][number])});
    }
    return rule;
}

Rules rules_of(const OnuBlock &block)
{
    Rules rules;
    for (uint32_t number = 0; number < block.get(at::count); ++number)
        rules[block.get(at::precedence[number])] = rule_at(block, number);
    return rules;
}

OnuBlock block_of(const Rules &rules)
{
    OnuBlock block(classification_size);
    block.put(at::action, add_rules);
    block.put(at::count, rules.size());
    uint32_t number = 0;
    for (const auto &[precedence, rule] : rules) {
        const size_t entries = rule.conditions.size();
        block.put(at::precedence[number], precedence);
        block.put(at::length[number], head_size + entry_size * entries);
        block.put(at::queue[number], rule.queue);
        block.put(at::mark[number], rule.mark);
        block.put(at::entries[number], entries);
        uint32_t entry = 0;
        for (const Condition &condition : rule.conditions) {
            block.put(fields[entry][number], condition.field);
            block.put(values[entry][number], condition.value);
            block.put(operators[entry++][number], condition.op);
        }
        ++number;
    }
    return block;
}

bool is_good(const Rule &rule)
{
    return rule.queue <= greatest_queue && (rule.mark <= greatest_mark || rule.mark == no_mark) &&
           !rule.conditions.empty() && std::ranges::all_of(rule.conditions, &Condition::is_good);
}

// Returns whether the block has so many rules, and these so many conditions, as there can be. No rule is there twice
// either.
bool is_whole(const OnuBlock &request)
{
    const auto count = request.get(at::count);
    if (count > most_rules) return false;
    for (uint32_t number = 0; number < count; ++number)
        if (request.get(at::entries[number]) > fields.size()) return false;
    return rules_of(request).size() == count;
}

} // namespace

bool is_good_classification(const OnuBlock &block)
{
    if (!is_whole(block)) return false;
    const Rules rules = rules_of(block);
    return block == block_of(rules) &&
           std::ranges::all_of(rules, [](const auto &rule) { return is_good(rule.second); });
}

OnuBlock classification(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side)
{
    return setting_of(olt, onu.key(BSP_CMD_ONU_CLASSIFICATION_GET, uni), side, block_of({}));
}

Plan classify(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const OnuBlock &request)
{
    const auto action = request.get(at::action);
    if (action > remove_all || !is_whole(request)) return {PON_ERR_BAD_RECORD};
    const Rules named = rules_of(request);
    if (action == remove_all && !named.empty()) return {PON_ERR_BAD_RECORD};

    Rules rules = rules_of(classification(olt, onu, uni, Side::local));
    if (action == remove_all) rules.clear();
    for (const auto &[precedence, rule] : named) {
        if (action == remove_rules) {
            rules.erase(precedence);
            continue;
        }
        if (!is_good(rule)) return {PON_ERR_BAD_RECORD};
        if (rule.queue >= onu.device.type->us_queues) return {PON_ERR_NOT_ABLE};
        rules[precedence] = rule;
    }
    if (rules.size() > most_rules) return {PON_ERR_TABLE_FULL};
    return send_setting(olt, onu, onu.key(BSP_CMD_ONU_CLASSIFICATION_GET, uni), block_of(rules), block_of({}));
}

} // namespace ponsim

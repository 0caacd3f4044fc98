#include "configuration/olt.h"

#include <algorithm>

#include "text/hex.h"
#include "text/sha256.h"

namespace config
{
namespace
{

constexpr size_t data_out = 1; // the argument through which the configuration is read

std::string action(const char *command)
{
    return "action=" + std::to_string(catalogue::find_command(command)->code);
}

void append(Bytes &bytes, uint32_t word)
{
    const auto *start = reinterpret_cast<const uint8_t *>(&word);
    bytes.insert(bytes.end(), start, start + sizeof word);
}

} // namespace

Invocation read_from_olt(Permission &permission)
{
    return {"bsp_profile_exec_get_cfgwr", {action("BSP_CMD_CONFIG_READ")}, permission};
}

std::string_view text_in(const Invocation &called)
{
    return called.text(data_out);
}

void load_into_olt(const std::string &text, Permission &permission,
                   const std::function<void(const Invocation &sent, bool last)> &told)
{
    constexpr size_t longest_part = 4048;
    const text::Sha256 digest = text::sha256(text);
    for (size_t offset = 0; offset < text.size(); offset += longest_part) {
        const size_t length = std::min(longest_part, text.size() - offset);
        Bytes part;
        append(part, static_cast<uint32_t>(offset));
        append(part, static_cast<uint32_t>(text.size()));
        append(part, static_cast<uint32_t>(length));
        part.insert(part.end(), digest.begin(), digest.end());
        const auto start = text.begin() + static_cast<ptrdiff_t>(offset);
        part.insert(part.end(), start, start + static_cast<ptrdiff_t>(length));
        const Invocation sent("bsp_profile_exec_set",
                              {action("BSP_CMD_CONFIG_LOAD_PART"), "buf=hex:" + text::to_hex(part)}, permission);
        told(sent, false);
        if (!sent.good()) return;
    }
    told(Invocation("bsp_profile_exec_set", {action("BSP_CMD_CONFIG_LOAD"), "buf=hex:" + text::to_hex(digest)},
                    permission),
         true);
}

Fitted fitted_to_olt(const Configuration &own, const Configuration &wanted, Permission &permission)
{
    const bool is_about_onus = std::ranges::any_of(wanted.rows, [&wanted](const ConfigRow &row) {
        const ConfigTable &table = wanted.tables.at(row.table);
        return !key_cell_text(table, row, "mac").empty() && !settings_of(table, row).empty();
    });
    return fitted(own, wanted, is_about_onus ? abilities_of_onus(permission) : AbilitiesOfOnus());
}

} // namespace config

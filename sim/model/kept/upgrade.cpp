#include "model/kept/upgrade.h"

#include <algorithm>

namespace ponsim
{
namespace
{

constexpr size_t longest_vendor = 4;
constexpr size_t longest_model = 15;
constexpr size_t longest_version = 16;
constexpr size_t longest_file = 63;

bool is_word(const std::string &text, size_t longest)
{
    return !text.empty() && text.size() <= longest &&
           std::ranges::all_of(text, [](char c) { return c > ' ' && c <= '~' && c != '"' && c != '\\'; });
}

constexpr uint64_t download_rate = 100 * 1024; // bytes/s of model time
constexpr ModelTime verification = 5 * ms_per_second;

} // namespace

bool is_version(const std::string &text)
{
    return is_word(text, longest_version);
}

bool is_good(const std::string &name, const UpgradeType &type)
{
    return is_word(name, longest_type_name) && is_word(type.vendor, longest_vendor) &&
           is_word(type.model, longest_model) && is_version(type.version) && image_sizes.contains(type.size) &&
           type.file.size() <= longest_file;
}

ModelTime download_time(uint32_t size)
{
    return (uint64_t{size} * ms_per_second + download_rate - 1) / download_rate;
}

std::optional<ModelTime> UpgradeRun::end() const
{
    switch (state) {
    case State::downloading:
        return since + download_time(size);
    case State::verifying:
        return since + verification;
    case State::rebooting:
        return since + reload_time;
    default:
        return std::nullopt;
    }
}

} // namespace ponsim

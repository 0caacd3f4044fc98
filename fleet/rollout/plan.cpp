#include "fleet/rollout/plan.h"

#include <algorithm>
#include <numeric>

#include "call/codec/errors.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/words.h"

namespace fleet
{
namespace
{

constexpr uint32_t most_at_once = 10000;

using call::UsageError;

std::string in_quotes(std::string_view text)
{
    return "'" + text::printable(text) + "'";
}

uint32_t read_count(const std::string &option, std::string_view text, uint32_t most)
{
    const auto count = text::to_number<uint32_t>(text);
    if (!count || *count == 0 || *count > most)
        throw UsageError(option + ": expected a number from 1 to " + std::to_string(most) + ", and not " +
                         in_quotes(text));
    return *count;
}

// Returns nothing when it is neither a number nor a percentage of 100 at most.
std::optional<Share> read_share(std::string_view text)
{
    const bool percent = text.ends_with('%');
    const auto amount = text::to_number<uint32_t>(text.substr(0, text.size() - (percent ? 1 : 0)));
    if (!amount || (percent && *amount > 100)) return std::nullopt;
    return Share{*amount, percent};
}

size_t rounded_up(Share share, size_t all)
{
    return share.percent ? (all * share.amount + 99) / 100 : share.amount;
}

uint32_t rounded_down(Share share, size_t all)
{
    return share.percent ? static_cast<uint32_t>(all * share.amount / 100) : share.amount;
}

} // namespace

uint32_t read_concurrency(std::string_view text)
{
    return read_count("--concurrency", text, most_at_once);
}

uint32_t read_limit(std::string_view text)
{
    return read_count("--limit", text, UINT32_MAX);
}

std::vector<Share> read_waves(std::string_view text)
{
    std::vector<std::string> words = text::split(text, ',');
    if (words.back() != "rest")
        throw UsageError("--waves: " + in_quotes(text) +
                         " must end with 'rest', so that each OLT is in a wave, as 1,5%,25%,rest");
    words.pop_back();
    std::vector<Share> waves;
    for (const std::string &word : words) {
        const std::optional<Share> share = read_share(word);
        if (!share || share->amount == 0)
            throw UsageError("--waves: expected a number of OLTs or a percentage, as 1,5%,25%,rest, and not " +
                             in_quotes(word));
        waves.push_back(*share);
    }
    return waves;
}

Share read_max_failures(std::string_view text)
{
    const std::optional<Share> share = read_share(text);
    if (!share)
        throw UsageError("--max-failures: expected a number of OLTs or a percentage, as 3 or 5%, and not " +
                         in_quotes(text));
    return *share;
}

size_t Plan::size() const
{
    return std::accumulate(waves.begin(), waves.end(), size_t{0},
                           [](size_t sum, const auto &wave) { return sum + wave.size(); });
}

Plan plan_for(const std::vector<std::string> &olts, const RolloutOptions &options)
{
    const size_t all = std::min<size_t>(olts.size(), options.limit.value_or(UINT32_MAX));
    if (all == 0) throw UsageError("there are no OLTs to go to");
    if (!options.check.empty() && options.waves.empty())
        throw UsageError("--check: it is run between waves; say with --waves which there are, as 1,5%,25%,rest");
    Plan plan;
    plan.concurrency = options.concurrency;
    plan.checked = !options.check.empty();
    if (options.max_failures)
        plan.most_failures = rounded_down(*options.max_failures, all);
    else if (!options.waves.empty())
        plan.most_failures = 0;

    size_t planned = 0;
    const auto add_wave = [&](size_t size) {
        size = std::min(size, all - planned);
        const auto first = olts.begin() + static_cast<ptrdiff_t>(planned);
        if (size > 0) plan.waves.emplace_back(first, first + static_cast<ptrdiff_t>(size));
        planned += size;
    };
    for (const Share share : options.waves)
        add_wave(rounded_up(share, all));
    add_wave(all);
    return plan;
}

} // namespace fleet

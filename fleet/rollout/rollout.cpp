#include "fleet/rollout/rollout.h"

#include <algorithm>
#include <stdexcept>

namespace fleet
{

Rollout::Rollout(Plan plan, const Progress &progress) : planned(std::move(plan)), waves_checked(progress.checked)
{
    for (const std::vector<std::string> &wave : planned.waves) {
        std::vector<std::string> &left = to_do.emplace_back();
        for (const std::string &olt : wave) {
            const auto before = progress.ended.find(olt);
            if (before != progress.ended.end() && is_final(before->second.state)) {
                ++counts[static_cast<size_t>(before->second.state)];
                continue;
            }
            left.push_back(olt);
            if (before != progress.ended.end()) states_before.emplace(olt, before->second.state);
        }
    }
    go_on();
}

std::vector<std::string> Rollout::next()
{
    std::vector<std::string> olts;
    if (!reason.empty()) return olts;
    const std::vector<std::string> &wave = to_do[current];
    while (run.size() < planned.concurrency && position < wave.size()) {
        olts.push_back(wave[position++]);
        run.insert(olts.back());
    }
    return olts;
}

void Rollout::ended(const std::string &olt, State state)
{
    if (run.erase(olt) == 0) throw std::logic_error(olt + " does not run");
    ++counts[static_cast<size_t>(state)];
    const auto before = states_before.find(olt);
    const bool is_known = before != states_before.end() && before->second == state;
    if (state != State::done && !is_known) ++failures;
    if (planned.most_failures && failures > *planned.most_failures && waiting() > 0)
        stop(std::to_string(failures) + (failures == 1 ? " OLT" : " OLTs") + " failed, and --max-failures permits " +
             std::to_string(*planned.most_failures));
    go_on();
}

std::optional<size_t> Rollout::check_due() const
{
    const bool due =
        planned.checked && reason.empty() && wave_is_over() && current + 1 < to_do.size() && waves_checked <= current;
    return due ? std::optional(current) : std::nullopt;
}

void Rollout::checked(bool good)
{
    const std::optional<size_t> wave_checked = check_due();
    if (!wave_checked) throw std::logic_error("no check of a wave is due");
    if (!good) return stop("the check after wave " + std::to_string(*wave_checked + 1) + " failed");
    waves_checked = *wave_checked + 1;
    go_on();
}

void Rollout::stop(const std::string &why)
{
    if (reason.empty()) reason = why;
}

bool Rollout::is_over() const
{
    return run.empty() && (!reason.empty() || waiting() == 0);
}

size_t Rollout::waiting() const
{
    size_t left = to_do[current].size() - position;
    for (size_t later = current + 1; later < to_do.size(); ++later)
        left += to_do[later].size();
    return left;
}

void Rollout::go_on()
{
    while (wave_is_over() && current + 1 < to_do.size() && !check_due() && reason.empty()) {
        ++current;
        position = 0;
    }
}

} // namespace fleet

#include "fleet/rollout/report.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "call/json.h"
#include "fleet/selection/selector.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/words.h"

namespace fleet
{
namespace
{

// Returns a number as people write it: 1,000.
std::string with_commas(size_t number)
{
    std::string digits = std::to_string(number);
    for (size_t at = digits.size(); at > 3; at -= 3)
        digits.insert(at - 3, ",");
    return digits;
}

std::string count_text(size_t olts)
{
    return with_commas(olts) + (olts == 1 ? " OLT" : " OLTs");
}

// Returns where the digits at the end of a name begin.
size_t number_of(const std::string &name)
{
    return name.find_last_not_of("0123456789") + 1;
}

// Returns the name that counts one further than this one. The text is empty when the name does not count.
std::string successor_of(const std::string &name)
{
    const size_t start = number_of(name);
    const std::string digits = name.substr(start);
    const auto number = text::to_number<uint64_t>(digits);
    if (!number || *number == UINT64_MAX) return {};
    std::string next = std::to_string(*number + 1);
    if (next.size() < digits.size()) next.insert(0, digits.size() - next.size(), '0');
    return name.substr(0, start) + next;
}

// A Span of names is some that count up, or a single name.
struct Span {
    size_t first, count;
};

std::vector<Span> spans_of(const std::vector<std::string> &names)
{
    constexpr size_t least = 3;
    std::vector<Span> spans;
    for (size_t at = 0; at < names.size();) {
        size_t end = at + 1;
        while (end < names.size() && names[end] == successor_of(names[end - 1]))
            ++end;
        if (end - at < least) end = at + 1;
        spans.push_back({at, end - at});
        at = end;
    }
    return spans;
}

std::string text_of(const Span &span, const std::vector<std::string> &names)
{
    return span.count == 1 ? names[span.first] : names[span.first] + ".." + names[span.first + span.count - 1];
}

void append_indented(std::string &to, const std::string &block)
{
    std::string_view rest = block;
    while (!rest.empty()) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        const std::string line = text::printable(rest.substr(0, end), "\t");
        if (!line.empty()) to.append("  ").append(line);
        to.push_back('\n');
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

} // namespace

std::vector<Group> groups_of(const Results &results)
{
    const auto order = [](const Result &a, const Result &b) {
        return std::tie(a.state, a.exit, a.output, a.errors) < std::tie(b.state, b.exit, b.output, b.errors);
    };
    std::map<Result, std::vector<std::string>, decltype(order)> together(order);
    for (const auto &[olt, result] : results)
        together[result].push_back(olt);
    std::vector<Group> groups;
    for (auto &[result, olts] : together) {
        std::ranges::sort(olts, comes_before);
        groups.push_back({std::move(olts), result});
    }
    std::ranges::sort(groups, [](const Group &a, const Group &b) {
        return a.olts.size() != b.olts.size() ? a.olts.size() > b.olts.size()
                                              : comes_before(a.olts.front(), b.olts.front());
    });
    return groups;
}

std::string names_text(const std::vector<std::string> &names, size_t width)
{
    std::vector<std::string> pieces;
    const std::vector<Span> spans = spans_of(names);
    for (const Span &span : spans)
        pieces.push_back(text_of(span, names));
    std::string whole = text::join(pieces);
    if (width == 0 || whole.size() <= width || pieces.empty()) return whole;

    std::string shown;
    std::string cut; // what is shown, with what says how many are not
    size_t left = names.size();
    for (size_t at = 0; at < pieces.size(); ++at) {
        shown += (at == 0 ? "" : ", ") + pieces[at];
        left -= spans[at].count;
        const std::string with_rest = left == 0 ? shown : shown + " and " + with_commas(left) + " more";
        if (at > 0 && with_rest.size() > width) break;
        cut = with_rest;
    }
    return cut;
}

std::string totals_text(const Results &results, size_t not_begun)
{
    std::array<size_t, number_of_states> counts{};
    for (const auto &[olt, result] : results)
        ++counts[static_cast<size_t>(result.state)];
    std::vector<std::string> parts;
    for (size_t state = 0; state < counts.size(); ++state)
        if (counts[state] > 0)
            parts.push_back(with_commas(counts[state]) + " " + std::string(name_of(static_cast<State>(state))));
    if (not_begun > 0) parts.push_back(with_commas(not_begun) + " not begun");
    return count_text(results.size() + not_begun) + ": " + (parts.empty() ? "none" : text::join(parts));
}

std::string report_text(const Results &results, size_t width)
{
    std::string text;
    for (const Group &group : groups_of(results)) {
        const Result &result = group.result;
        std::string state(name_of(result.state));
        if (result.state == State::failed) state += ", exit code " + std::to_string(result.exit);
        const std::string behind =
            (group.olts.size() == 1 ? "" : " (" + count_text(group.olts.size()) + ")") + ": " + state;
        const size_t left = width == 0 ? 0 : std::max<size_t>(width, behind.size() + 1) - behind.size();
        if (!text.empty()) text.push_back('\n');
        text.append(names_text(group.olts, left)).append(behind).push_back('\n');
        append_indented(text, result.output);
        append_indented(text, result.errors);
    }
    return text;
}

std::string report_json(const Results &results)
{
    std::vector<std::string> olts;
    for (const auto &[olt, result] : results)
        olts.push_back(olt);
    std::ranges::sort(olts, comes_before);
    call::JsonText json;
    json->StartArray();
    for (const std::string &olt : olts) {
        const Result &result = results.find(olt)->second;
        json->StartObject();
        json.member("olt", olt);
        json.member("state", name_of(result.state));
        json.key("exit");
        json->Int(result.exit);
        if (result.output.empty()) {
            json.null("result");
        } else {
            json.key("result");
            json.document(result.output);
        }
        json.member_or_null("errors", result.errors);
        json->EndObject();
    }
    json->EndArray();
    return json.written();
}

} // namespace fleet

#include "results/onu_set.h"

#include <algorithm>
#include <array>
#include <deque>
#include <functional>

#include <unistd.h>

#include "board/datastore.h"
#include "call/invocation.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

// A Progress is one line on a terminal that disappears when the object is destroyed.
class Progress
{
public:
    explicit Progress(size_t count)
        : total(count), shown(count > 1 && !mode().quiet && !mode().watched && isatty(STDERR_FILENO))
    {
    }
    ~Progress()
    {
        if (shown) std::fputs("\r\033[K", stderr);
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void next(const Onu &onu)
    {
        if (shown) std::fprintf(stderr, "\r\033[K%zu of %zu: ONU %s", ++done, total, onu.name().c_str());
    }

private:
    size_t total, done = 0;
    bool shown;
};

void add(IdSet &ids, uint32_t id)
{
    ids[id / 32] |= uint32_t{1} << id % 32;
}

// Returns the word of a command line for the argument, or the field of an argument, that has one of these names.
std::string word_for(const catalogue::Operation &operation, const std::array<std::string_view, 2> &names)
{
    const auto is_named = [&names](std::string_view name) { return std::ranges::find(names, name) != names.end(); };
    for (const catalogue::Argument &argument : operation.arguments) {
        if (is_number(argument) && is_named(argument.name)) return std::string(argument.name);
        if (!takes_fields(operation, argument)) continue;
        for (const catalogue::Field *field : fields_of(operation, argument))
            if (is_named(field->name)) return std::string(argument.name) + "." + std::string(field->name);
    }
    throw UsageError("--onus: " + std::string(operation.name) + " has no argument " + std::string(names.front()));
}

ExitCode report_onu(const OnuCalls &asked, bool several)
{
    ExitCode code = exit_success;
    for (const Invocation &called : asked.calls)
        code = std::max(code, report(called, several ? asked.onu + ": " : std::string()));
    return code;
}

} // namespace

OnuSet parse_onu_set(const std::string &text)
{
    const std::string form = "a PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all";
    if (text.empty()) throw UsageError("SET: missing; give " + form);
    const size_t slash = text.find('/');
    const std::string port = text.substr(0, slash);
    if (slash == text.npos || slash + 1 == text.size() || !is_number(port))
        throw UsageError("SET: '" + text + "' is not " + form);
    OnuSet set{parse_number("SET", port)};
    if (set.port == 0) throw UsageError("SET: '" + text + "' names no port: they count from 1");
    const std::string ids = text.substr(slash + 1);
    set.all = ids == "all";
    if (!set.all) set.ids = parse_idset("SET", ids);
    return set;
}

std::optional<OnuSet> set_in_place_of(const std::string &port, const std::string &onu)
{
    if (port.find('/') == port.npos) return std::nullopt;
    if (!onu.empty()) throw UsageError("ONU: not beside a set; " + port + " names the ONUs already");
    return parse_onu_set(port);
}

std::string format_onu_set(const OnuSet &set)
{
    return std::to_string(set.port) + "/" + (set.all ? "all" : format_idset(set.ids));
}

std::string describe_onu_set(const OnuSet &set)
{
    return (!set.all && count_of(set.ids) == 1 ? "ONU " : "ONUs ") + format_onu_set(set);
}

ExitCode look_up_bound(uint32_t port, IdSet &ids)
{
    const Invocation listed("bsp_pon_exec_get_json_",
                            words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", std::to_string(port)}}),
                            looking());
    if (!listed.good()) return report(listed);
    const db_handle *database = listed.database();
    for (uint32_t row = 0; database && row < db_rows(database); ++row) {
        int64_t id = 0;
        if (db_get_integer(database, row, "onu_id", &id) == 0 && id >= 0 && id <= max_onu_id)
            add(ids, static_cast<uint32_t>(id));
    }
    if (count_of(ids) > 0) return exit_success;
    complain("no ONU is bound at port " + std::to_string(port));
    return exit_status;
}

ExitCode for_each_onu(const OnuSet &set, const std::function<void(const Onu &, std::deque<Invocation> &)> &act,
                      const std::function<void(const std::deque<OnuCalls> &, bool several)> &show)
{
    IdSet ids = set.ids;
    if (set.all)
        if (const ExitCode code = look_up_bound(set.port, ids); code != exit_success) return code;
    if (set.but_0 && holds(ids, 0)) throw UsageError("SET: " + id_0_is_none);
    // All bound ONUs count as several, even if there is only one, so that the form of the result does not depend on
    // their number.
    const bool several = set.all || count_of(ids) > 1;

    std::deque<OnuCalls> asked;
    {
        Progress progress(count_of(ids));
        for (uint32_t id = 0; id <= max_onu_id; ++id) {
            if (!holds(ids, id)) continue;
            const Onu onu{set.port, id};
            progress.next(onu);
            narrow_hits(HitOnu{onu.port, onu.id});
            act(onu, asked.emplace_back(onu.name()).calls);
        }
        narrow_hits(std::nullopt);
    }
    show(asked, several);
    std::fflush(stdout);

    ExitCode worst = exit_success;
    IdSet failed{};
    auto of_onu = asked.begin();
    for (uint32_t id = 0; id <= max_onu_id; ++id) {
        if (!holds(ids, id)) continue;
        const ExitCode code = report_onu(*of_onu++, several);
        if (code != exit_success) add(failed, id);
        worst = std::max(worst, code);
    }
    if (several && worst != exit_success)
        complain(std::to_string(count_of(failed)) + " of " + std::to_string(count_of(ids)) +
                 " ONUs failed: " + format_onu_set({set.port, failed}));
    return worst;
}

std::function<void(const std::deque<OnuCalls> &, bool several)> statuses_on(const Output &output)
{
    return [&output](const std::deque<OnuCalls> &asked, bool) {
        if (output.format != Format::json) return;
        Json json(output.stream);
        json->StartArray();
        for (const auto &[onu, calls] : asked)
            for (const Invocation &called : calls) {
                json->StartObject();
                json.member("onu", onu);
                json.member("operation", called.operation().name);
                json.ipc_result(called.exchange().result);
                json.status(called.status());
                json->EndObject();
            }
        json->EndArray();
    };
}

std::vector<std::string> onu_words(const catalogue::Operation &operation, const Onu &onu,
                                   const std::vector<std::string> &more)
{
    std::vector<std::string> words{word_for(operation, {"pon_port", "onu_pon_port"}) + "=" + std::to_string(onu.port),
                                   word_for(operation, {"onu_id", "onu_onu_id"}) + "=" + std::to_string(onu.id)};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

ExitCode list_onus(const Output &output, const OnuSet &set, const char *name)
{
    const catalogue::Operation &operation = *catalogue::find_operation(name);
    return for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            calls.emplace_back(operation, onu_words(operation, onu), consent());
        },
        [&](const std::deque<OnuCalls> &asked, bool) {
            std::vector<Subject> subjects;
            for (const OnuCalls &of_onu : asked)
                subjects.push_back({of_onu.onu, {{"rows", "Rows", &of_onu.calls.front()}}});
            print_each(output, subjects, false);
        });
}

ExitCode tell_onus(const Output &output, const OnuSet &set, const char *name, const std::vector<std::string> &words)
{
    const catalogue::Operation &operation = *catalogue::find_operation(name);
    return for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            calls.emplace_back(operation, onu_words(operation, onu, words), consent());
        },
        statuses_on(output));
}

} // namespace ponctl

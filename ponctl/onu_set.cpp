#include "onu_set.h"

#include <algorithm>

#include <unistd.h>

#include "daily.h"
#include "report.h"

namespace ponctl
{
namespace
{

// One line on a terminal that goes when this does.
class Progress
{
public:
    explicit Progress(size_t count) : total(count), shown(count > 1 && isatty(STDERR_FILENO)) {}
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

// The ids that are bound at a port.
ExitCode look_up_bound(uint32_t port, IdSet &ids)
{
    const Called listed("bsp_pon_exec_get_json_",
                        words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", std::to_string(port)}}));
    if (!listed.good()) return listed.report();
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

ExitCode report(const OnuCalls &asked, bool several)
{
    ExitCode code = exit_success;
    for (const Called &called : asked.calls)
        code = std::max(code, called.report(several ? asked.onu + ": " : std::string()));
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

std::string format_onu_set(const OnuSet &set)
{
    return std::to_string(set.port) + "/" + (set.all ? "all" : format_idset(set.ids));
}

std::string describe_onu_set(const OnuSet &set)
{
    return (!set.all && count_of(set.ids) == 1 ? "ONU " : "ONUs ") + format_onu_set(set);
}

ExitCode for_each_onu(const OnuSet &set, const std::function<void(const Onu &, std::deque<Called> &)> &act,
                      const std::function<void(const std::deque<OnuCalls> &, bool several)> &show)
{
    IdSet ids = set.ids;
    if (set.all)
        if (const ExitCode code = look_up_bound(set.port, ids); code != exit_success) return code;
    // All the bound ONUs are several, be there one alone, so that the form of the result does not depend on it.
    const bool several = set.all || count_of(ids) > 1;

    std::deque<OnuCalls> asked;
    {
        Progress progress(count_of(ids));
        for (uint32_t id = 0; id <= max_onu_id; ++id) {
            if (!holds(ids, id)) continue;
            const Onu onu{set.port, id};
            progress.next(onu);
            act(onu, asked.emplace_back(onu.name()).calls);
        }
    }
    if (show) show(asked, several);
    std::fflush(stdout);

    ExitCode worst = exit_success;
    IdSet failed{};
    auto of_onu = asked.begin();
    for (uint32_t id = 0; id <= max_onu_id; ++id) {
        if (!holds(ids, id)) continue;
        const ExitCode code = report(*of_onu++, several);
        if (code != exit_success) add(failed, id);
        worst = std::max(worst, code);
    }
    if (several && worst != exit_success)
        complain(std::to_string(count_of(failed)) + " of " + std::to_string(count_of(ids)) +
                 " ONUs failed: " + format_onu_set({set.port, failed}));
    return worst;
}

std::vector<std::string> onu_words(const catalogue::Operation &operation, const Onu &onu,
                                   const std::vector<std::string> &more)
{
    const bool by_record = std::ranges::find(operation.arguments, catalogue::ArgumentType::record,
                                             &catalogue::Argument::type) != operation.arguments.end();
    const std::string start = by_record ? "msg.onu_" : "";
    std::vector<std::string> words{start + "pon_port=" + std::to_string(onu.port),
                                   start + "onu_id=" + std::to_string(onu.id)};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

} // namespace ponctl

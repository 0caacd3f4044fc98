#include "cli/repeat.h"

#include <ctime>

#include "call/codec/numbers.h"
#include "call/codec/values.h"
#include "output/exit_code.h"

namespace ponctl
{
namespace
{

uint32_t parse_interval(const std::string &seconds)
{
    constexpr catalogue::Field field{"interval", catalogue::FieldType::u32, 0, 4, "s", 0.001, {}};
    return static_cast<uint32_t>(parse_number("--watch", seconds, field));
}

uint32_t parse_count(const std::string &count)
{
    if (count.empty()) return 0;
    const uint32_t number = parse_number("--count", count);
    if (number == 0) throw UsageError("--count: '0' is not a number of readings from 1");
    return number;
}

} // namespace

Repeat::Repeat(const std::string &interval, const std::string &count)
    : milliseconds(parse_interval(interval)), wanted(parse_count(count))
{
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, &before);
}

Repeat::~Repeat()
{
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

bool Repeat::next()
{
    if (wanted > 0 && taken == wanted) return false;
    if (taken++ == 0) return true;
    const timespec wait{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000};
    was_interrupted = sigtimedwait(&ending, nullptr, &wait) >= 0;
    return !was_interrupted;
}

} // namespace ponctl

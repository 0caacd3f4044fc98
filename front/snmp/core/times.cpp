#include <array>
#include <chrono>

#include "snmp/core/table_kind.h"

namespace front::snmp
{

uint64_t time_ticks(UnixTime at, const Times &times)
{
    return at <= times.started ? 0 : static_cast<uint32_t>((at - times.started) / 10);
}

std::string date_and_time(UnixTime at)
{
    using namespace std::chrono;
    const sys_time<milliseconds> time{milliseconds(at)};
    const year_month_day date{floor<days>(time)};
    const hh_mm_ss day_time{time - floor<days>(time)};
    const auto year = static_cast<unsigned>(static_cast<int>(date.year()));
    const std::array<unsigned, 11> octets{year / 256,
                                          year % 256,
                                          static_cast<unsigned>(date.month()),
                                          static_cast<unsigned>(date.day()),
                                          static_cast<unsigned>(day_time.hours().count()),
                                          static_cast<unsigned>(day_time.minutes().count()),
                                          static_cast<unsigned>(day_time.seconds().count()),
                                          static_cast<unsigned>(day_time.subseconds().count() / 100),
                                          '+',
                                          0,
                                          0};
    return std::string(octets.begin(), octets.end());
}

} // namespace front::snmp

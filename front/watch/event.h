// What happened at an OLT, as it is told to people, to monitoring systems and to a history.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "watch/fact.h"

namespace front
{

enum class EventKind : uint8_t {
    olt_lost,
    olt_back,
    onu_waiting,
    onu_online,
    onu_offline,
    onu_refused, // it is bound, and turned away for its LOID
    onu_removed, // it is bound no more, or waits no more
    light_low,
    light_well,
    rogue_found,
    rogue_gone,
    loop_found,
    loop_gone,
    link_down, // of an uplink
    link_up,
    module_alarm,
    module_well,
    alarm_raised,
    alarm_cleared,
    upgrade_done,
    upgrade_failed,
};
inline constexpr size_t event_kind_count = 21;

std::string_view name_of(EventKind kind);
std::optional<EventKind> event_kind(std::string_view name);

// An Event is one change, or several of one kind and one cause at one port that were found together.
struct Event {
    uint64_t id = 0; // counts on in the history; 0 before it is kept
    UnixTime at = 0;
    std::string olt;
    EventKind kind;
    uint32_t port = 0;                   // 0 of the OLT itself, and of an uplink; the cage of a module
    uint32_t count = 1;                  // of changes
    std::optional<uint32_t> onu_id = {}; // where there is one change
    std::string mac = {};                // where there is one change
    std::string onus = {};               // ids of the ONUs of several changes, as in 1-5,9
    std::string detail = {};             // of what: an alarm, a quantity, a UNI port, who receives light
    std::string cause = {}, place = {};
    std::optional<double> measure = {}; // where there is one change

    bool operator==(const Event &) const = default;
};

// Returns the event in a line of plain words.
std::string sentence_of(const Event &event);

} // namespace front

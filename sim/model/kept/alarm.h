// Alarms are kept with their states, and the last events of their history.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "model/base/alarm.h"
#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/family.h"

namespace ponsim
{

// An AlarmKey says what has an alarm, and which.
struct AlarmKey {
    uint32_t pon_port; // 0: the alarm of an uplink
    Mac mac;           // zero: the alarm of the port itself
    uint32_t alarm;
    uint32_t unit = 0; // UNI port or uplink; 0: of the whole

    auto operator<=>(const AlarmKey &) const = default;
};

// An AlarmReason says why an alarm was raised, and where the cause lies as far as that is known.
struct AlarmReason {
    AlarmCause cause = AlarmCause::unknown;
    std::optional<uint32_t> branch = {}; // of the port's fibre
    Mac other = {};                      // the other ONU that has to do with it; zero: none
    uint32_t other_port = 0;             // PON port of the other ONU, or where this one is bound

    bool operator==(const AlarmReason &) const = default;
};

struct AlarmRecord {
    uint32_t count;                       // how often it was raised since somebody cleared it
    std::optional<ModelTime> raised = {}; // none: at a time that was not kept
    std::optional<ModelTime> cleared = {};
    AlarmReason reason = {};

    bool active() const { return !cleared; }
};

// An AlarmEvent says that an alarm was raised or cleared.
struct AlarmEvent {
    ModelTime at;
    AlarmKey alarm;
    std::optional<uint32_t> onu_id; // to which the ONU was bound then
    bool active;                    // it was raised
    AlarmReason reason;
};

inline constexpr uint32_t greatest_unit = std::max(max_unis, ge_uplinks);

// So many events are kept. A new event takes the place of the oldest one.
inline constexpr uint64_t alarm_history = 1024;

// Which alarms there are, and of what, is checked in the same way in both tables.
struct AlarmKeyCheck {
    static const char *problem_of(uint32_t ports, const AlarmKey &key)
    {
        if (key.pon_port > ports) return "the OLT has no such port";
        if (!is_alarm(key.alarm)) return "there is no such alarm";
        const bool of_uplink = key.alarm == static_cast<uint32_t>(Alarm::uplink_down);
        return of_uplink == (key.pon_port == 0) ? nullptr : "only the alarm of an uplink has port 0";
    }
};

inline constexpr std::tuple alarm_key_columns{
    Column{"pon_port", &AlarmKey::pon_port, {0, max_ports}}, Column{"mac", &AlarmKey::mac},
    Column{"alarm", &AlarmKey::alarm, {1, max_alarm}}, Column{"unit", &AlarmKey::unit, {0, greatest_unit}}};
inline constexpr std::tuple alarm_reason_columns{Column{"cause", &AlarmReason::cause, {0, max_alarm_cause}},
                                                 NumberOrNone{"branch", &AlarmReason::branch, -1, {0, max_branch}},
                                                 Column{"other", &AlarmReason::other},
                                                 Column{"other_port", &AlarmReason::other_port, {0, max_ports}}};

template <>
struct Family<AlarmRecord> {
    static constexpr std::string_view table = "alarm";
    using Key = AlarmKey;
    static constexpr std::tuple key{alarm_key_columns};
    static constexpr std::tuple value{Column{"count", &AlarmRecord::count},
                                      NumberOrNone{"raised", &AlarmRecord::raised, -1, past},
                                      NumberOrNone{"cleared", &AlarmRecord::cleared, -1, past},
                                      InnerColumns{&AlarmRecord::reason, alarm_reason_columns}};
    static constexpr bool placed = true;
    static constexpr size_t most_of_port = remembered_per_port * 8 + 8;
    static constexpr size_t most = max_ports * most_of_port + ge_uplinks;

    struct Check {
        const char *operator()(uint32_t ports, const Key &alarm, const AlarmRecord &) const
        {
            return AlarmKeyCheck::problem_of(ports, alarm);
        }
    };
};

template <>
struct Family<AlarmEvent> {
    static constexpr std::string_view table = "alarm_event";
    using Key = uint64_t; // events are numbered from 1 on
    static constexpr std::tuple key{Itself<Key>{"number", {1, latest_time}}};
    static constexpr size_t most = alarm_history;
    static constexpr std::tuple value{
        Column{"at", &AlarmEvent::at, past}, InnerColumns{&AlarmEvent::alarm, alarm_key_columns},
        NumberOrNone{"onu_id", &AlarmEvent::onu_id, -1, {0, onus_per_port - 1}}, Column{"active", &AlarmEvent::active},
        InnerColumns{&AlarmEvent::reason, alarm_reason_columns}};

    struct Check {
        const char *operator()(uint32_t ports, Key, const AlarmEvent &event) const
        {
            return AlarmKeyCheck::problem_of(ports, event.alarm);
        }
    };
};

} // namespace ponsim

#include "model/port/loops.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/plant/device.h"

namespace ponsim
{
namespace
{

Plan refuse(uint32_t status)
{
    return {status};
}

// Sets one of the settings to `value`, which must lie within the bounds.
template <class Value>
Plan set(const Olt &olt, Value LoopDetection::*setting, uint32_t value, const Bounds &bounds = natural_bounds<Value>())
{
    if (!bounds.contains(value)) return refuse(PON_ERR_BAD_RECORD);
    LoopDetection detection = olt.loop_detection();
    detection.*setting = static_cast<Value>(value);
    return {BSP_OK, change_of<LoopDetection>({}, detection)};
}

SettingKey switch_place(const UniKey &key)
{
    return {key.pon_port, key.mac, BSP_CMD_ONU_LOOP_DETECT_GET, key.uni};
}

// Returns whether detection packets come back through the loop.
bool found_by_packets(const Olt &olt, const UniKey &key, const LoopRecord &record)
{
    return olt.loop_detection().on && detects_loops(olt, key, Side::remote) && record.looped && !record.shut &&
           olt.online(*olt.port(key.pon_port), key.mac);
}

LoopRecord recovered(const Olt &olt, LoopRecord record)
{
    record.shut = false;
    record.since = olt.now();
    return record;
}

// Returns when something happens to the loop by itself.
std::optional<ModelTime> next_of(const Olt &olt, const UniKey &key, const LoopRecord &record)
{
    if (found_by_packets(olt, key, record) != record.watched_from.has_value()) return olt.now();
    if (record.watched_from)
        return std::max(olt.now(), *record.watched_from + olt.loop_detection().interval * ms_per_second);
    return recovery_of(olt, record);
}

// Returns when a setting of loop detection that is on its way reaches the UNI port.
std::optional<ModelTime> switched(const Olt &olt, const UniKey &key)
{
    const OnuSetting *setting = olt.setting(switch_place(key));
    return setting && setting->arrives > olt.now() ? std::optional(setting->arrives) : std::nullopt;
}

std::optional<ModelTime> next(const Olt &olt)
{
    std::optional<ModelTime> first;
    for (const auto &[key, record] : olt.loops())
        for (const std::optional<ModelTime> &time : {next_of(olt, key, record), switched(olt, key)})
            if (time && (!first || *time < *first)) first = time;
    return first;
}

Change happen(const Olt &olt)
{
    Change change;
    LoopDetection detection = olt.loop_detection();
    for (const auto &[key, old] : olt.loops()) {
        const std::optional<ModelTime> time = next_of(olt, key, old);
        if (!time || *time > olt.now()) continue;
        LoopRecord record = old;
        if (found_by_packets(olt, key, old) != old.watched_from.has_value()) {
            record.watched_from = old.watched_from ? std::nullopt : std::optional(olt.now());
        } else if (old.watched_from) {
            record.watched_from.reset();
            record.shut = true;
            record.since = olt.now();
            ++record.detected;
            ++detection.detected;
        } else {
            record = recovered(olt, old);
            ++detection.recovered;
        }
        change.put<LoopRecord>(key, record);
    }
    if (detection != olt.loop_detection()) change.put<LoopDetection>({}, detection);
    return change;
}

} // namespace

const Process loop_process{next, happen};

OnuBlock loop_detect_block(bool on)
{
    OnuBlock block(sizeof(uint32_t));
    block.put(layout::onu_loop_detect_set::on, on);
    return block;
}

bool detects_loops(const Olt &olt, const UniKey &key, Side side)
{
    return setting_of(olt, switch_place(key), side, loop_detect_block(true)) == loop_detect_block(true);
}

LoopState state_of(const LoopRecord &record)
{
    if (record.shut) return LoopState::shut;
    return record.looped ? LoopState::looped : LoopState::recovered;
}

std::optional<ModelTime> recovery_of(const Olt &olt, const LoopRecord &record)
{
    const LoopDetection &detection = olt.loop_detection();
    if (!record.shut || !detection.on || detection.manual) return std::nullopt;
    return std::max(olt.now(), record.since + detection.recovery_time * ms_per_second);
}

Plan set_loop(const Olt &olt, const UniKey &key, bool looped)
{
    if (!olt.port(key.pon_port)) return refuse(PON_ERR_NO_PORT);
    if (!olt.id_at(key.pon_port, key.mac)) return refuse(PON_ERR_NOT_BOUND);
    if (key.uni < 1 || key.uni > olt.device_of(key.mac).unis.size()) return refuse(PON_ERR_NO_UNI);

    Plan plan{BSP_OK};
    const auto found = olt.loops().find(key);
    if (found == olt.loops().end()) {
        if (!looped) return plan;
        if (olt.loops().size() >= max_loops) {
            const UniKey *oldest = nullptr;
            for (const auto &[other, record] : olt.loops())
                if (state_of(record) == LoopState::recovered &&
                    (!oldest || record.since < olt.loops().at(*oldest).since))
                    oldest = &other;
            if (!oldest) return refuse(PON_ERR_TABLE_FULL);
            plan.change.drop<LoopRecord>(*oldest);
        }
        plan.change.put<LoopRecord>(key, LoopRecord{.looped = true, .since = olt.now()});
        return plan;
    }
    LoopRecord record = found->second;
    if (record.looped == looped) return plan;
    record.looped = looped;
    if (!record.shut) record.since = olt.now();
    const bool nothing_to_tell = !looped && !record.shut && record.detected == 0;
    plan.change.add(Entry<LoopRecord>{key, nothing_to_tell ? std::nullopt : std::optional(record)});
    return plan;
}

Plan detect_loops(const Olt &olt, uint32_t on)
{
    return set(olt, &LoopDetection::on, on);
}

Plan set_recovery_mode(const Olt &olt, uint32_t manual)
{
    return set(olt, &LoopDetection::manual, manual);
}

Plan set_recovery_time(const Olt &olt, uint32_t seconds)
{
    return set(olt, &LoopDetection::recovery_time, seconds, LoopDetection::recovery_times);
}

Plan set_packet_interval(const Olt &olt, uint32_t seconds)
{
    return set(olt, &LoopDetection::interval, seconds, LoopDetection::intervals);
}

Plan recover_all(const Olt &olt)
{
    Plan plan{BSP_OK};
    LoopDetection detection = olt.loop_detection();
    for (const auto &[key, record] : olt.loops()) {
        if (!record.shut) continue;
        plan.change.put<LoopRecord>(key, recovered(olt, record));
        ++detection.recovered;
    }
    if (!plan.change.of<LoopRecord>().empty()) plan.change.put<LoopDetection>({}, detection);
    return plan;
}

} // namespace ponsim

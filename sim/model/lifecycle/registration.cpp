#include "model/lifecycle/registration.h"

#include <algorithm>
#include <map>
#include <vector>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarm/alarms.h"
#include "model/base/chance.h"
#include "model/base/random.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/images.h"
#include "model/lifecycle/upgrade.h"
#include "model/olt/mpcp.h"
#include "model/olt/remote.h"
#include "model/plant/bit_errors.h"

namespace ponsim
{

namespace
{

using Registrations = std::map<uint32_t, Registration>;

// An ONU that is kept out is asked for its LOID again after this time.
constexpr ModelTime retry_time = 60 * ms_per_second;

// These lengths are in time quanta.
constexpr uint32_t quantum = 16; // ns
// Returns the time to the port and back, at the 2 * 10^8 m/s of light in fibre.
uint32_t round_trip(const Arrival &arrival)
{
    return arrival.distance * 10 / quantum;
}

// Returns how much of a discovery window an answer takes: a REGISTER_REQ of 84 octets with preamble and gap at 1
// Gbit/s, the time that the receiver needs before it, and the 512 ns each that a laser may take to go on and to go off.
uint32_t answer_length(const Mpcp &mpcp)
{
    constexpr uint32_t register_req = 84 * 8 / quantum;
    constexpr uint32_t laser = 512 / quantum;
    return register_req + mpcp.sync_time + 2 * laser;
}

// Returns the time from the window in which an ONU is heard to its REGISTER_ACK. REGISTER and GATE follow the window,
// and the acknowledgement comes in the grant of the GATE. Each takes one grant cycle.
ModelTime mpcp_time(const Mpcp &mpcp)
{
    constexpr uint64_t us_per_ms = 1000;
    const uint64_t us = uint64_t{mpcp.discovery_window} * quantum / 1000 + 2 * uint64_t{mpcp.grant_cycle};
    return (us + us_per_ms - 1) / us_per_ms;
}

// OAM discovery has three states. Each ends with the next OAMPDU of the other side, and at most ten a second may be
// sent. Then each side reports the other which extended OAM it knows.
constexpr uint64_t oam_states = 3;
constexpr ModelTime oam_discovery = oam_states * 100; // ms

Chance passes(const Reception &reception)
{
    return opposite(frame_error(reception.steps, control_frame));
}

// Returns the chance that so many messages in either direction all pass.
Chance all_pass(const OnuRecord &record, uint64_t messages_down, uint64_t messages_up)
{
    return both(every_time(passes(record.down), messages_down), every_time(passes(record.up), messages_up));
}

// Draws in how many discovery windows the GATE or the REGISTER_REQ is lost before both pass. Returns none when that
// takes too long, because there is no light or too little.
std::optional<uint64_t> windows_missed(const Olt &olt, const Mac &mac, const OnuRecord &record)
{
    if (!record.heard()) return std::nullopt;
    Random random = random_for(olt.seed() + olt.now(), Purpose::windows, mac);
    const uint64_t missed = failures_before_success(random, all_pass(record, 1, 1));
    if (missed >= never) return std::nullopt;
    return missed;
}

// Returns the ONUs that are heard of those that answer in one window. Each waits for a random time, and answers that
// overlap are lost.
std::vector<const Arrival *> heard_in_window(const Olt &olt, const PonPort &port,
                                             const std::vector<const Arrival *> &onus)
{
    const Mpcp mpcp = mpcp_of(olt, port.number);
    const uint32_t length = answer_length(mpcp);
    std::vector<std::pair<uint32_t, const Arrival *>> answers; // answers by the time when they begin
    for (const Arrival *onu : onus) {
        Random random = random_for(olt.seed() + olt.now(), Purpose::discovery, onu->mac);
        answers.emplace_back(round_trip(*onu) + random.below(mpcp.discovery_window - length), onu);
    }
    std::ranges::sort(answers, {}, &std::pair<uint32_t, const Arrival *>::first);
    std::vector<const Arrival *> result;
    for (size_t index = 0; index < answers.size(); ++index) {
        const uint32_t begin = answers[index].first;
        const bool after_another = index > 0 && begin < answers[index - 1].first + length;
        const bool before_another = index + 1 < answers.size() && answers[index + 1].first < begin + length;
        if (!after_another && !before_another) result.push_back(answers[index].second);
    }
    return result;
}

void set_phase(const Olt &olt, const PonPort &port, const Mac &mac, Phase phase, ModelTime length, Change &change)
{
    OnuRecord &record = edit(change, port, mac);
    record.phase = phase;
    record.phase_ends = phase == Phase::registered ? 0 : olt.now() + length;
    // With the link, the time begins in which its frames may be missing.
    if (phase != Phase::oam && phase != Phase::registered) return;
    for (const Direction direction : directions)
        if (Reception &reception = record.reception(direction); reception.light != Light::good && reception.heard())
            reception.since = olt.now();
}

// Draws how many windows an ONU leaves out that was not heard because answers overlapped. If all of them came again at
// once, a full port would take minutes.
uint32_t windows_left_out(const Olt &olt, const Mac &mac)
{
    constexpr uint32_t below = 4;
    return random_for(olt.seed() + olt.now(), Purpose::back_off, mac).below(below);
}

void hold_window(const Olt &olt, const PonPort &port, const std::vector<const Arrival *> &onus, Change &change)
{
    const std::vector<const Arrival *> in_time = heard_in_window(olt, port, onus);
    const ModelTime interval = mpcp_of(olt, port.number).discovery_interval;
    for (const Arrival *onu : onus) {
        if (std::ranges::find(in_time, onu) == in_time.end()) {
            begin_registration(olt, port, onu->mac, olt.now() + 1 + windows_left_out(olt, onu->mac) * interval, change);
        } else if (port.refuses(onu->mac)) {
            set_phase(olt, port, onu->mac, Phase::registered, 0, change);
            raise(olt, alarm_key(port, onu->mac, Alarm::rejected), {AlarmCause::black_list}, change);
            report(olt, DebugSwitch::onu, port.number, onu->mac, "rejected: on the blacklist", change);
        } else {
            set_phase(olt, port, onu->mac, Phase::mpcp, mpcp_time(mpcp_of(olt, port.number)), change);
        }
    }
}

void come_in(const Olt &olt, const PonPort &port, const Arrival &arrival, Registrations &registrations, Change &change)
{
    set_phase(olt, port, arrival.mac, Phase::registered, 0, change);
    if (port.refuses(arrival.mac)) {
        raise(olt, alarm_key(port, arrival.mac, Alarm::rejected), {AlarmCause::black_list}, change);
        return;
    }
    registrations.try_emplace(port.number, olt, port, port.authentication, change).first->second.add(arrival, false);
}

// Returns whether all messages of the phase that has ended have arrived.
bool phase_passes(const Olt &olt, const PonPort &port, const Mac &mac, const OnuRecord &record)
{
    Random random = random_for(olt.seed() + olt.now(), Purpose::phases, mac);
    switch (record.phase) {
    case Phase::mpcp: // REGISTER and GATE, REGISTER_ACK
        return happens(random, all_pass(record, 2, 1));
    case Phase::oam: { // an OAMPDU of each side for each of the states
        const uint64_t messages = oam_states + (port.authentication.extended_oam ? 1 : 0);
        return happens(random, all_pass(record, messages, messages));
    }
    default: // question and answer
        return happens(random, all_pass(record, 1, 1));
    }
}

// Begins a phase anew, some message of which was lost.
void try_again(const Olt &olt, const PonPort &port, const Mac &mac, Phase phase, Change &change)
{
    if (phase == Phase::mpcp)
        begin_registration(olt, port, mac, olt.now() + 1, change);
    else if (phase == Phase::oam)
        bring_up_oam(olt, port, mac, change);
    else
        set_phase(olt, port, mac, Phase::authentication, oam_delay, change);
}

// Continues after the end of a phase other than the discovery.
void go_on(const Olt &olt, const PonPort &port, const Arrival &arrival, Registrations &registrations, Change &change)
{
    const Mac &mac = arrival.mac;
    const OnuRecord record = port.record(mac);
    const bool reports = !(arrival.silent && olt.id_at(port.number, mac));
    if (!phase_passes(olt, port, mac, record)) {
        try_again(olt, port, mac, record.phase, change);
        return;
    }
    switch (record.phase) {
    case Phase::mpcp:
        if (reports) report(olt, DebugSwitch::onu, port.number, mac, "registered", change);
        bring_up_oam(olt, port, mac, change);
        return;
    case Phase::oam:
        if (reports && port.authentication.extended_oam)
            report(olt, DebugSwitch::ctc_oam, port.number, mac, "extended OAM discovered", change);
        if (port.authentication.mode == AuthMode::mac)
            come_in(olt, port, arrival, registrations, change);
        else
            set_phase(olt, port, mac, Phase::authentication, oam_delay, change);
        return;
    default:
        come_in(olt, port, arrival, registrations, change);
    }
}

std::optional<ModelTime> next(const Olt &olt)
{
    if (olt.registrations().empty()) return std::nullopt;
    return olt.registrations().begin()->at;
}

Change happen(const Olt &olt)
{
    Change change;
    Registrations registrations; // one for each port, so that ONUs that register together are not bound to the same id
    std::map<uint32_t, std::vector<const Arrival *>> windows;
    for (const Olt::Due &due : olt.registrations()) {
        if (due.at > olt.now()) break;
        const PonPort &port = *olt.port(due.pon_port);
        const Arrival *arrival = port.arrived(due.mac);
        const OnuRecord record = port.record(due.mac);
        if (!arrival || !record.powered || !port.limits.contain(arrival->distance)) {
            set_phase(olt, port, due.mac, Phase::registered, 0, change);
        } else if (record.phase == Phase::booting) {
            edit(change, port, due.mac).phase = Phase::discovery;
            begin_registration(olt, port, due.mac, olt.now(), change);
        } else if (!record.heard()) {
            begin_registration(olt, port, due.mac, olt.now() + 1, change);
        } else if (record.phase == Phase::discovery) {
            windows[port.number].push_back(arrival);
        } else {
            go_on(olt, port, *arrival, registrations, change);
        }
    }
    for (const auto &[pon_port, onus] : windows)
        hold_window(olt, *olt.port(pon_port), onus, change);
    return change;
}

} // namespace

const Process registration_process{next, happen};

Registration::Registration(const Olt &model, const PonPort &at, const Authentication &rules, Change &planned)
    : olt(model), port(at), authentication(rules), change(planned), taken(ids_of(at.bindings))
{
    const bool by_loid = port.authentication.mode != AuthMode::mac;
    for (const Arrival &arrival : port.arrivals)
        if (by_loid && port.authentication.accepts(arrival) && olt.online(port, arrival.mac))
            admitted.emplace(arrival.loid, arrival.mac);
}

void Registration::add(const Arrival &arrival, bool was_registered)
{
    const std::optional<uint32_t> bound_id = olt.id_at(port.number, arrival.mac);
    const Binding *binding = bound_id ? &*port.bindings[*bound_id] : nullptr;
    if (binding && arrival.silent) return;
    if (authentication.turns_away(arrival, binding)) {
        const bool turned_away_before = was_registered && port.authentication.turns_away(arrival, binding);
        if (!turned_away_before)
            raise(olt, alarm_key(port, arrival.mac, Alarm::auth_failed), {AlarmCause::loid}, change);
        return;
    }
    if (!authentication.accepts(arrival)) return;
    const bool by_mac = binding && (binding->exempt || authentication.mode == AuthMode::mac_or_loid);
    const bool lets_in = binding || (!olt.find(arrival.mac) && port.record(arrival.mac).supported);
    if (by_mac || !lets_in) return;
    if (const auto [first, is_first] = admitted.emplace(arrival.loid, arrival.mac);
        !is_first && first->second != arrival.mac) {
        keep_out(arrival, first->second);
        return;
    }
    if (binding) return;
    const std::optional<uint32_t> onu_id = lowest_free(taken);
    if (!onu_id) return;
    taken.set(*onu_id);
    change.put<Binding>({port.number, *onu_id},
                        {.mac = arrival.mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}, .description = {}});
}

void Registration::keep_out(const Arrival &arrival, const Mac &first)
{
    set_phase(olt, port, arrival.mac, Phase::authentication, retry_time, change);
    const AlarmKey key = alarm_key(port, arrival.mac, Alarm::same_loid);
    if (const AlarmRecord *record = olt.alarm(key); record && record->active()) return;
    raise(olt, key, {.cause = AlarmCause::same_loid, .other = first, .other_port = port.number}, change);
    report(olt, DebugSwitch::onu, port.number, arrival.mac, "kept out: another ONU has its LOID", change);
}

void boot(const Olt &olt, const PonPort &port, const Mac &mac, Change &change)
{
    set_phase(olt, port, mac, Phase::booting, boot_time(olt.seed(), mac, *olt.device_of(mac).type), change);
}

void begin_registration(const Olt &olt, const PonPort &port, const Mac &mac, ModelTime from, Change &change)
{
    OnuRecord &record = edit(change, port, mac);
    if (record.phase == Phase::booting) return;
    record.phase = Phase::discovery;
    const std::optional<uint64_t> missed = windows_missed(olt, mac, record);
    const ModelTime interval = mpcp_of(olt, port.number).discovery_interval;
    const ModelTime first = std::max((from + interval - 1) / interval, ModelTime{1}); // there is no window at time 0
    record.phase_ends = missed ? (first + *missed) * interval : 0;
}

void bring_up_oam(const Olt &olt, const PonPort &port, const Mac &mac, Change &change)
{
    set_phase(olt, port, mac, Phase::oam, oam_discovery + (port.authentication.extended_oam ? oam_delay : 0), change);
}

void change_limits(const Olt &olt, const PonPort &port, const RangingLimits &limits, Change &change)
{
    for (const Arrival &arrival : port.arrivals) {
        const bool before = port.limits.contain(arrival.distance);
        const bool now = limits.contain(arrival.distance);
        if (!port.record(arrival.mac).powered || before == now) continue;
        if (now)
            begin_registration(olt, port, arrival.mac, olt.now(), change);
        else if (olt.online(port, arrival.mac))
            raise(olt, alarm_key(port, arrival.mac, Alarm::los), {AlarmCause::distance}, change);
    }
}

Plan set_power(const Olt &olt, uint32_t pon_port, const Mac &mac, bool on)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!port->arrived(mac)) return {PON_ERR_NOT_ARRIVED};
    OnuRecord record = port->record(mac);
    if (record.powered == on) return {BSP_OK};
    record.powered = on;
    Plan plan{BSP_OK};
    if (on) {
        start_committed(olt, *port, mac, record, plan.change);
        interrupt_runs(olt, *port, {&mac, 1}, plan.change);
        plan.change.put<OnuRecord>({pon_port, mac}, record);
        boot(olt, *port, mac, plan.change);
        return plan;
    }
    plan.change.put<OnuRecord>({pon_port, mac}, record);
    set_phase(olt, *port, mac, Phase::registered, 0, plan.change);
    if (olt.online(*port, mac)) {
        for (const Alarm alarm : {Alarm::dying_gasp, Alarm::los})
            raise(olt, alarm_key(*port, mac, alarm), {AlarmCause::power}, plan.change);
    }
    return plan;
}

} // namespace ponsim

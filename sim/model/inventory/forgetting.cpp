#include "model/inventory/forgetting.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace ponsim
{
namespace
{

bool is_among(const std::vector<Arrival> &arrivals, const Mac &mac)
{
    return std::ranges::find(arrivals, mac, &Arrival::mac) != arrivals.end();
}

// A Rank says how soon a record makes room: the least goes first.
using Rank = std::pair<uint32_t, ModelTime>;

// A Ranking returns the rank of a record of a port, or none where the record stays.
class Ranking
{
public:
    Ranking(const Olt &of_olt, const PonPort &of_port)
        : olt(of_olt), port(of_port), found(of_olt.found_at(of_port.number).arrivals)
    {
    }

    // What somebody has set of an ONU is more than what has become of it.
    std::optional<Rank> operator()(const OnuAtPort &key, const OnuRecord &record) const
    {
        const bool is_set = !record.supported || record.bad_image || !record.upgrade_type.empty();
        return if_former(key.mac, {is_set, 0});
    }
    std::optional<Rank> operator()(const OnuAtPort &key, const UpgradeRun &run) const
    {
        if (run.under_way()) return std::nullopt;
        return if_former(key.mac, {0, run.since});
    }
    std::optional<Rank> operator()(const OnuAtPort &key, const PluggedOnu &) const
    {
        if (is_among(found, key.mac)) return std::nullopt;
        return if_former(key.mac, {});
    }
    std::optional<Rank> operator()(const AlarmKey &key, const AlarmRecord &record) const
    {
        if (!record.active()) return Rank{0, *record.cleared};
        if (is_zero(key.mac)) return std::nullopt;
        return if_former(key.mac, {1, record.raised.value_or(0)});
    }
    template <class Key, class Record>
    std::optional<Rank> operator()(const Key &key, const Record &) const
    {
        return if_former(key.mac, {});
    }

private:
    std::optional<Rank> if_former(const Mac &mac, Rank rank) const
    {
        if (port.arrived(mac) || olt.id_at(port.number, mac)) return std::nullopt;
        return rank;
    }

    const Olt &olt;
    const PonPort &port;
    std::vector<Arrival> found; // see is_found()
};

// Visits the records of a family at a port.
template <class Record, class Visit>
void each_at(const Olt &olt, const PonPort &port, Visit visit)
{
    if constexpr (std::is_same_v<Record, OnuRecord>) {
        for (const auto &[mac, record] : port.onus)
            visit(OnuAtPort{port.number, mac}, record);
    } else if constexpr (std::is_same_v<Record, UpgradeRun>) {
        for (const auto &[mac, run] : port.upgrades.all())
            visit(OnuAtPort{port.number, mac}, run);
    } else if constexpr (std::is_same_v<Record, AlarmRecord>) {
        for (const auto &[at, record] : port.alarms)
            visit(AlarmKey{port.number, at.mac, at.alarm, at.unit}, record);
    } else {
        const auto &records = olt.kept<Record>();
        for (auto at = records.lower_bound(first_key<typename Family<Record>::Key>(port.number));
             at != records.end() && at->first.pon_port == port.number; ++at)
            visit(at->first, at->second);
    }
}

// Returns a number of records that the port does not exceed. It is found without counting them.
template <class Record>
size_t size_at_most(const Olt &olt, const PonPort &port)
{
    if constexpr (std::is_same_v<Record, OnuRecord>)
        return port.onus.size();
    else if constexpr (std::is_same_v<Record, UpgradeRun>)
        return port.upgrades.all().size();
    else if constexpr (std::is_same_v<Record, AlarmRecord>)
        return port.alarms.size();
    else
        return olt.kept<Record>().size();
}

// Lets records of former ONUs go, where the port would have too many with those of the change. What the change itself
// says of a record holds.
template <class Record>
void make_room_at(const Olt &olt, const PonPort &port, Change &change)
{
    using Key = typename Family<Record>::Key;
    if (size_at_most<Record>(olt, port) + change.of<Record>().size() <= Family<Record>::most_of_port) return;
    std::map<Key, bool> said; // whether a record is kept at the key
    for (const Entry<Record> &entry : change.of<Record>())
        if (entry.key.pon_port == port.number) said[entry.key] = kept_record(entry) != nullptr;
    auto count = static_cast<size_t>(std::ranges::count(said, true, &std::pair<const Key, bool>::second));
    const Ranking rank_of(olt, port);
    std::vector<std::pair<Rank, Key>> former;
    each_at<Record>(olt, port, [&](const Key &key, const Record &record) {
        if (said.contains(key)) return;
        ++count;
        if (const std::optional<Rank> rank = rank_of(key, record)) former.emplace_back(*rank, key);
    });
    if (count <= Family<Record>::most_of_port) return;
    const size_t going = std::min(count - Family<Record>::most_of_port, former.size());
    std::ranges::partial_sort(former, former.begin() + static_cast<std::ptrdiff_t>(going));
    for (size_t index = 0; index < going; ++index)
        change.drop<Record>(former[index].second);
}

// The records of such a family are those of ONUs at ports.
template <class Record>
concept OfOnus = BoundedByPort<Record> && requires(typename Family<Record>::Key key)
{
    key.mac;
};

template <OfOnus Record>
void make_room(const Olt &olt, Change &change)
{
    std::set<uint32_t> ports;
    for (const Entry<Record> &entry : change.of<Record>())
        ports.insert(entry.key.pon_port);
    for (const uint32_t number : ports)
        if (const PonPort *port = olt.port(number)) make_room_at<Record>(olt, *port, change);
}

// Returns whether the change binds the ONU to an id of the port.
bool binds(const Change &change, const OnuAtPort &onu)
{
    return std::ranges::any_of(change.of<Binding>(), [&](const Entry<Binding> &entry) {
        return entry.key.pon_port == onu.pon_port && entry.record && entry.record->mac == onu.mac;
    });
}

void forget_released(const Olt &olt, Change &change)
{
    for (const auto &[key, binding] : change.of<Binding>()) {
        const PonPort &port = *olt.port(key.pon_port);
        const std::optional<Binding> &before = port.bindings[key.onu_id];
        if (!before || port.arrived(before->mac)) continue;
        if (const OnuAtPort onu{key.pon_port, before->mac}; !binds(change, onu)) {
            if (!is_found(olt, onu)) forget<PluggedOnu>(olt, onu, change);
            forget_own(olt, onu, change);
        }
    }
}

} // namespace

bool is_found(const Olt &olt, const OnuAtPort &onu)
{
    return is_among(olt.found_at(onu.pon_port).arrivals, onu.mac);
}

void forget_own(const Olt &olt, const OnuAtPort &onu, Change &change)
{
    forget<PluggedDevice>(olt, onu, change);
    forget<LoopRecord>(olt, onu, change);
    forget<OnuSetting>(olt, onu, change);
    forget<Ledger>(olt, onu, change);
}

void add_forgotten(const Olt &olt, Change &change)
{
    forget_released(olt, change);
    Kept::each_family([&]<class Record>() {
        if constexpr (OfOnus<Record>) make_room<Record>(olt, change);
    });
}

} // namespace ponsim

// UNI ports, their loops, and ONUs that wait to be bound.
#include <charconv>

#include "snmp/core/items.h"
#include "snmp/core/pon_tables.h"
#include "text/hex.h"

namespace front::snmp
{
namespace
{

using Uni = view::uni_attributes;
using Waiting = view::onu_info;
using Loop = view::loop_info;

constexpr std::string_view loop_states[] = {"looped", "shut", "recovered"};

// Returns the speed of a link that is up, in Mbit/s: 1000 of 1000FD.
Item speed_of(const std::optional<std::string_view> &link)
{
    uint32_t speed = 0;
    if (!link || std::from_chars(link->data(), link->data() + link->size(), speed).ec != std::errc())
        return std::nullopt;
    return speed;
}

Item duplex_of(const std::optional<std::string_view> &link)
{
    if (!link || !(link->ends_with("HD") || link->ends_with("FD"))) return std::nullopt;
    return link->ends_with("HD") ? 1 : 2;
}

constexpr Column<Uni> uni_columns[] = {
    {2, "bspUniAdmin", Type::integer, [](const Uni &uni, const Making &) { return uni.admin ? Item(1) : Item(2); }},
    {3, "bspUniLink", Type::integer,
     [](const Uni &uni, const Making &) { return uni.link ? Item(*uni.link == "down" ? 2 : 1) : std::nullopt; }},
    {4, "bspUniSpeed", Type::gauge32, [](const Uni &uni, const Making &) { return speed_of(uni.link); }},
    {5, "bspUniDuplex", Type::integer, [](const Uni &uni, const Making &) { return duplex_of(uni.link); }},
    {6, "bspUniAutoneg", Type::integer, [](const Uni &uni, const Making &) { return truth(uni.autoneg); }},
    {7, "bspUniPause", Type::integer, [](const Uni &uni, const Making &) { return truth(uni.pause); }},
    {8, "bspUniIngressRate", Type::gauge32, [](const Uni &uni, const Making &) { return Item(uni.ingress); }},
    {9, "bspUniEgressRate", Type::gauge32, [](const Uni &uni, const Making &) { return Item(uni.egress); }},
};

constexpr Column<Waiting> waiting_columns[] = {
    {2, "bspWaitingSince", Type::octets,
     [](const Waiting &onu, const Making &making) -> Item {
         if (!making.source.facts) return std::nullopt;
         const auto found = making.source.facts->find({FactKind::onu, onu.pon_port, text::mac_text(onu.mac), {}});
         if (found == making.source.facts->end() || found->second.value != onu.state || found->second.since == 0)
             return std::nullopt;
         return date_and_time(found->second.since);
     }},
    {3, "bspWaitingDistance", Type::gauge32, [](const Waiting &onu, const Making &) { return Item(onu.distance); }},
    {4, "bspWaitingSupported", Type::integer, [](const Waiting &onu, const Making &) { return truth(onu.supported); }},
    {5, "bspWaitingLoid", Type::octets, [](const Waiting &onu, const Making &) { return Item(onu.loid); }},
    {6, "bspWaitingAdmit", Type::integer, [](const Waiting &, const Making &) { return Item(-1); }},
};

constexpr Column<Loop> loop_columns[] = {
    {2, "bspLoopOnuId", Type::integer, [](const Loop &loop, const Making &) { return Item(loop.onu_id); }},
    {3, "bspLoopState", Type::integer,
     [](const Loop &loop, const Making &) { return place_of(loop.state, loop_states); }, loop_states},
    {4, "bspLoopDetected", Type::gauge32, [](const Loop &loop, const Making &) { return Item(loop.detected); }},
    {5, "bspLoopChanged", Type::gauge32, [](const Loop &loop, const Making &) { return Item(loop.changed); }},
    {6, "bspLoopRecovers", Type::gauge32, [](const Loop &loop, const Making &) { return Item(loop.recovers); }},
};

} // namespace

TableInfo uni_table()
{
    return {
        .entry = {1, 8, 1},
        .name = "bspUniEntry",
        .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspOnuId"}, {"bspUniNumber"}},
        .columns = kinds_of<Uni>(uni_columns),
        .made_of = {Table::unis},
        .make = [](Part &part, const Making &making) {
            for (const Uni &uni : rows_of(making.source.snapshot->unis))
                add<Uni>(part, uni_columns, Oid{making.source.index, uni.pon_port, uni.onu_id, uni.uni}, uni, making);
        }};
}

TableInfo waiting_table()
{
    return {.entry = {1, 9, 1},
            .name = "bspWaitingEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspWaitingMac", 6}},
            .columns = kinds_of<Waiting>(waiting_columns),
            .made_of = {Table::onus},
            .of_facts = true,
            .make = [](Part &part, const Making &making) {
                for (const Waiting &onu : rows_of(making.source.snapshot->onus))
                    if (!onu.onu_id)
                        add<Waiting>(part, waiting_columns, index_with({making.source.index, onu.pon_port}, onu.mac),
                                     onu, making);
            }};
}

TableInfo loop_table()
{
    return {.entry = {1, 10, 1},
            .name = "bspLoopEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspLoopMac", 6}, {"bspUniNumber"}},
            .columns = kinds_of<Loop>(loop_columns),
            .made_of = {Table::loops},
            .make = [](Part &part, const Making &making) {
                for (const Loop &loop : rows_of(making.source.snapshot->loops)) {
                    Oid index = index_with({making.source.index, loop.pon_port}, loop.mac);
                    index.push_back(loop.uni);
                    add<Loop>(part, loop_columns, index, loop, making);
                }
            }};
}

} // namespace front::snmp

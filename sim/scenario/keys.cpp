#include "scenario/keys.h"

namespace ponsim
{

using toml_file::Keys;

const Keys &scenario_keys()
{
    static const Keys kind{
        {"vendor"},           {"model"},      {"chipset"}, {"ge_ports"},      {"fe_ports"},          {"pots_ports"},
        {"us_queues"},        {"fec"},        {"battery"}, {"igmp_snooping"}, {"multicast_control"}, {"fast_leave"},
        {"vlan_translation"}, {"vlan_trunk"}, {"class"},   {"boot"},          {"boot_spread"}};
    static const Keys service{{"bound"},  {"auth"}, {"fixed"},       {"assured"}, {"maximum"},   {"priority"},
                              {"weight"}, {"down"}, {"description"}, {"load_up"}, {"load_down"}, {"curve"}};
    static const Keys branch{{"name"}, {"from"}, {"length"}, {"split"}};
    static const Keys onu{{"name"}, {"count"}, {"kind"}, {"service"},  {"branch"}, {"drop"},
                          {"id"},   {"mac"},   {"loid"}, {"password"}, {"silent"}, {"in_use"}};
    static const Keys port{{"number"}, {"numbers"}, {"class"}, {"auth"}, {"branch", branch}, {"onu", onu}};
    static const Keys olt{{"name"}, {"count"}, {"ports"}, {"seed"}, {"class"}, {"port", port}};
    static const Keys event{{"at"}, {"do"}, {"every"}, {"times"}, {"olt"}};
    static const Keys failure{{"of"}, {"ports"}, {"names"}, {"mtbf"}, {"mttr"}, {"olt"}};
    static const Keys expect{{"at"},       {"every"},   {"times"},    {"olt"},     {"view"},   {"port"},
                             {"onu"},      {"uni"},     {"where"},    {"column"},  {"equals"}, {"not"},
                             {"at_least"}, {"at_most"}, {"contains"}, {"matches"}, {"null"}};
    static const Keys scenario{{"curve"},
                               {"include"},
                               {"variables"},
                               {"seed"},
                               {"start"},
                               {"kind", kind, true},
                               {"service", service, true},
                               {"olt", olt},
                               {"event", event},
                               {"failure", failure},
                               {"expect", expect}};
    return scenario;
}

} // namespace ponsim

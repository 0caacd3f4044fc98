// All tables of SNMP, made of what is known of OLTs.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <vector>

#include "snmp/core/objects.h"
#include "snmp/core/table_kind.h"

namespace front::snmp
{

struct MibSettings {
    // Of BSP-PON-MIB: net-snmp's arc for experiments.
    Oid root = {1, 3, 6, 1, 4, 1, 8072, 9999, 9999};
    bool standard_tables = true; // those of IF-MIB, ENTITY-MIB and others, too

    bool operator==(const MibSettings &) const = default;
};

// Returns all tables, in the order of their entries below the root, and then those of standards.
std::span<const TableInfo> table_infos();

// A Mib makes objects, and makes only those tables again that have changed since. One thread uses it.
class Mib
{
public:
    explicit Mib(MibSettings wanted);

    // Returns what is known of the OLTs now; the same objects as before while nothing has changed. Call it after every
    // reading, too, so that no counter can go back and on unseen. OLTs are in the order of their indexes.
    std::shared_ptr<const Objects> objects(std::span<const Source> olts, const Times &times);

private:
    // A part that was made, and of what: not the snapshot itself, which would stay for as long as its slowest table.
    struct Made {
        std::shared_ptr<const Part> part;
        std::string name;
        std::vector<std::pair<uint64_t, UnixTime>> readings; // generations and times of the tables that it is made of
        std::shared_ptr<const Facts> facts;
        Times at;
    };
    // Returns whether something is different from what it was.
    static bool make(const TableInfo &info, const Source &olt, const Times &times, Made &made);

    // Adds what IF-MIB has of the interfaces of all OLTs together.
    void add_interface_scalars(std::vector<ObjectTable> &tables, const Times &times);

    const MibSettings settings;
    Oid interfaces;                             // by their ifIndex, when they were looked at last
    UnixTime interfaces_changed = 0;            // when there were others
    std::vector<const TableInfo *> infos;       // in the order of their entries
    std::vector<std::map<uint32_t, Made>> made; // by table and OLT
    std::shared_ptr<const Objects> latest;
};

} // namespace front::snmp

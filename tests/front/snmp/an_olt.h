// An OLT of which every table is known, for tests of SNMP.
#pragma once

#include "snmp/core/mib.h"

namespace front::snmp
{

inline constexpr UnixTime test_time = 1'700'000'000'000; // 2023-11-14 22:13:20 UTC

// Returns an identifier below another one.
Oid below(Oid top, const Oid &rest);

// Makes tables, and puts them into a snapshot as though they were read now.
class OltMaker
{
public:
    OltMaker();

    template <class Row>
    OltMaker &set(std::shared_ptr<const Rows<Row>> Snapshot::*member, Table table, std::vector<Row> rows)
    {
        auto made = std::make_shared<Rows<Row>>();
        made->rows = std::move(rows);
        (*snapshot).*member = made;
        return read(table);
    }
    OltMaker &read(Table table);
    OltMaker &facts(Facts facts);
    // Later readings are made at this time.
    OltMaker &at(UnixTime time);

    // Returns what is known now. What is made later does not change it.
    Source source(uint32_t index = 1, std::string name = "north") const;

private:
    std::shared_ptr<Snapshot> snapshot = std::make_shared<Snapshot>();
    std::shared_ptr<const Facts> known;
    UnixTime time = test_time;
};

// Returns an OLT with two PON ports, an uplink, ONUs 1/5 and 2/0, and one that waits.
OltMaker an_olt();

} // namespace front::snmp

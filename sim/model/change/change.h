// A change says what becomes different of the OLT. A request brings about a change, the store writes it in one
// transaction, and it is read back from the store.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "model/base/mac.h"
#include "model/change/fault.h"
#include "model/kept/kept.h"

namespace ponsim
{

// The filter selects entries of the forwarding database that meet all of its conditions. A 0 selects all values.
struct FdbFilter {
    bool pon = true;     // entries of the PON side
    bool network = true; // entries of the network side
    uint32_t port = 0;   // PON port or GE uplink
    uint32_t llid = 0;
    uint32_t uni = 0;
    uint32_t vlan = 0;
    Mac mac = {};
};

// What goes through all families is in change.cpp. Otherwise each file that has a change would make code for all of
// them.
struct Change : Kept {
    Change();
    Change(const Change &);
    Change(Change &&) noexcept;
    Change &operator=(const Change &);
    Change &operator=(Change &&) noexcept;
    ~Change();

    using Kept::add;
    // Adds all of another change.
    void add(const Change &more);
    // Returns whether nothing becomes different. Time and traffic, which the simulator adds, do not count.
    bool empty() const;

    std::vector<FdbFilter> flushes = {}; // entries to be forgotten; the store does not know the forwarding database
    std::vector<std::string> log = {};   // lines for the service's log; not kept
    std::vector<FaultOrder> faults = {}; // what the service is to do with its answers; not kept
};

// Returns a change of one record.
template <class Of>
Change change_of(Entry<Of> entry)
{
    Change change;
    change.add(std::move(entry));
    return change;
}
template <class Of>
Change change_of(typename Family<Of>::Key key, Of record)
{
    return change_of(Entry<Of>{std::move(key), std::move(record)});
}
template <class Of>
Change removal_of(typename Family<Of>::Key key)
{
    return change_of(Entry<Of>{std::move(key), std::nullopt});
}

} // namespace ponsim

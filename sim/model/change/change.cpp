#include "model/change/change.h"

namespace ponsim
{

Change::Change() = default;
Change::Change(const Change &) = default;
Change::Change(Change &&) noexcept = default;
Change &Change::operator=(const Change &) = default;
Change &Change::operator=(Change &&) noexcept = default;
Change::~Change() = default;

void Change::add(const Change &more)
{
    Kept::add(more);
    flushes.insert(flushes.end(), more.flushes.begin(), more.flushes.end());
    log.insert(log.end(), more.log.begin(), more.log.end());
    faults.insert(faults.end(), more.faults.begin(), more.faults.end());
}

bool Change::empty() const
{
    return flushes.empty() && empty_but<Offered, Ledger, ModelClock>();
}

} // namespace ponsim

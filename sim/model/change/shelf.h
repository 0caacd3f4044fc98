// A Shelf keeps the records of a family for which the OLT has no place of its own.
#pragma once

#include <map>

#include "model/kept/family.h"

namespace ponsim
{

template <class Record>
class Shelf
{
public:
    using Records = std::map<typename Family<Record>::Key, Record>;

    const Records &records() const { return kept; }
    // Returns null when there is no record.
    const Record *find(const typename Family<Record>::Key &key) const
    {
        const auto found = kept.find(key);
        return found == kept.end() ? nullptr : &found->second;
    }

    void take(const Entry<Record> &entry)
    {
        if (const Record *record = kept_record(entry))
            kept.insert_or_assign(entry.key, *record);
        else
            kept.erase(entry.key);
    }

private:
    Records kept;
};

template <class Record>
requires(Family<Record>::placed) class Shelf<Record>
{
public:
    void take(const Entry<Record> &) {}
};

} // namespace ponsim

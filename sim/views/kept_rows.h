// This keeps the rows that a PON port has in a view of ONUs, as text, until something becomes different.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "model/base/look.h"
#include "model/olt/olt.h"

namespace ponsim
{

// The rows of a port must follow from what PonPort::generation counts, and from the time.
class KeptRows
{
public:
    // These are rows of a table with commas between them.
    struct Rows {
        std::string bound;
        std::string waiting;
    };
    using SharedRows = std::shared_ptr<const Rows>;

    // Returns the rows of a port, which `make` makes when they are not kept or no longer hold. `kind` says which of the
    // rows that a port has. Several threads may ask at the same time.
    template <class Make>
    SharedRows of(const Olt &olt, const PonPort &port, uint32_t kind, Make make)
    {
        const Key key{port.number, kind};
        {
            const std::lock_guard lock(mutex);
            const auto found = kept.find(key);
            if (found != kept.end() && found->second.generation == port.generation &&
                !olt.has_come(found->second.until))
                return found->second.rows;
        }
        const Look look;
        const auto rows = std::make_shared<const Rows>(make());
        const std::lock_guard lock(mutex);
        kept[key] = {port.generation, look.holds_until(), rows};
        return rows;
    }

    // Forgets all rows, because the generations begin anew.
    void clear()
    {
        const std::lock_guard lock(mutex);
        kept.clear();
    }

private:
    using Key = std::pair<uint32_t, uint32_t>;
    struct Entry {
        uint64_t generation;
        ModelTime until;
        SharedRows rows;
    };

    std::mutex mutex; // guards `kept`
    std::map<Key, Entry> kept;
};

} // namespace ponsim

// This keeps the rows that a PON port has in a view of ONUs, as text, until something becomes different.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/base/look.h"
#include "model/olt/olt.h"

namespace ponsim
{

// These rows are kept by port. They must follow from what PonPort::generation counts, and from the time.
enum class RowsOf : uint32_t { bound, bound_without_texts, waiting, capabilities, upgrades, uni_attributes };

class KeptRows
{
public:
    using Table = std::shared_ptr<const std::string>;

    // Returns the table of a port's rows. `make` makes it when it is not kept or no longer holds. Several threads may
    // ask at the same time.
    template <class Make>
    Table of(const Olt &olt, const PonPort &port, RowsOf kind, Make make)
    {
        const Key key{port.number, kind};
        {
            const std::lock_guard lock(mutex);
            const auto found = kept.find(key);
            if (found != kept.end() && found->second.generation == port.generation &&
                !olt.has_come(found->second.until))
                return found->second.table;
        }
        const Look look;
        const auto table = std::make_shared<const std::string>(make(port));
        const std::lock_guard lock(mutex);
        kept[key] = {port.generation, look.holds_until(), table};
        return table;
    }

    // Forgets all rows, because the generations begin anew.
    void clear()
    {
        const std::lock_guard lock(mutex);
        kept.clear();
    }

private:
    using Key = std::pair<uint32_t, RowsOf>;
    struct Entry {
        uint64_t generation;
        ModelTime until;
        Table table;
    };

    std::mutex mutex; // guards `kept`
    std::map<Key, Entry> kept;
};

// Returns one table of all of these ports' rows: all of the first kind, then all of the next. `make(kind)` returns what
// makes the table of a port. Without `kept` all tables are made anew.
template <class Make>
std::string table_of_ports(const Olt &olt, std::span<const PonPort> ports, std::initializer_list<RowsOf> kinds,
                           KeptRows *kept, Make make)
{
    KeptRows none;
    std::vector<KeptRows::Table> tables;
    size_t size = 2;
    for (const RowsOf kind : kinds)
        for (const PonPort &port : ports) {
            tables.push_back((kept ? *kept : none).of(olt, port, kind, make(kind)));
            size += tables.back()->size();
        }
    std::string joined = "[";
    joined.reserve(size);
    for (const KeptRows::Table &table : tables) {
        const std::string_view rows = std::string_view(*table).substr(1, table->size() - 2);
        if (joined.size() > 1 && !rows.empty()) joined += ',';
        joined += rows;
    }
    return joined += ']';
}

} // namespace ponsim

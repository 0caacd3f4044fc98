// Entries hold records of several families: what the OLT keeps, or what becomes different of it.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <ranges>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/kept/family.h"

namespace ponsim
{

template <class... Record>
class Entries
{
public:
    // Returns the entries in the order in which they were made. Of two entries with the same key the later one holds.
    template <class Of>
    const std::vector<Entry<Of>> &of() const
    {
        return std::get<std::vector<Entry<Of>>>(lists);
    }

    template <class Of>
    void put(typename Family<Of>::Key key, Of record)
    {
        list<Of>().push_back({std::move(key), std::move(record)});
    }
    template <class Of>
    void drop(typename Family<Of>::Key key)
    {
        list<Of>().push_back({std::move(key), std::nullopt});
    }
    template <class Of>
    void add(Entry<Of> entry)
    {
        list<Of>().push_back(std::move(entry));
    }
    // Adds all entries of another Entries.
    void add(const Entries &other)
    {
        other.each([this](const auto &entry) { add(entry); });
    }

    // Returns the record that is put at the key. Returns null when no record is put there.
    template <class Of>
    Of *find(const typename Family<Of>::Key &key)
    {
        return const_cast<Of *>(std::as_const(*this).template find<Of>(key));
    }
    template <class Of>
    const Of *find(const typename Family<Of>::Key &key) const
    {
        const auto &entries = of<Of>();
        const auto found =
            std::find_if(entries.rbegin(), entries.rend(), [&](const Entry<Of> &entry) { return entry.key == key; });
        return found == entries.rend() || !found->record ? nullptr : &*found->record;
    }

    // Visits the entries family by family.
    template <class Visit>
    void each(Visit visit) const
    {
        (std::ranges::for_each(of<Record>(), visit), ...);
    }
    // Visits the families, each by the type of its record.
    template <class Visit>
    static void each_family(Visit visit)
    {
        (visit.template operator()<Record>(), ...);
    }

    // Returns whether there are no entries, or entries of the named families only.
    template <class... Others>
    bool empty_but() const
    {
        return ((of<Record>().empty() || is_one_of<Record, Others...>)&&...);
    }

    // Merged entries are those of several Entries. Of those with the same key only the last one is left.
    class Merged
    {
    public:
        void add(const Entries &entries)
        {
            entries.each([this]<class Of>(const Entry<Of> &entry) {
                std::get<ByKey<Of>>(families).insert_or_assign(entry.key, entry);
            });
        }
        bool empty() const { return (std::get<ByKey<Record>>(families).empty() && ...); }
        // Visits the entries family by family.
        template <class Visit>
        void each(Visit visit) const
        {
            (std::ranges::for_each(std::views::values(std::get<ByKey<Record>>(families)), visit), ...);
        }

    private:
        template <class Of>
        using ByKey = std::map<typename Family<Of>::Key, Entry<Of>>;

        std::tuple<ByKey<Record>...> families;
    };

    // OfEach has one Of<Record> for each family. make_each makes all of them from the same arguments.
    template <template <class> class Of>
    using OfEach = std::tuple<Of<Record>...>;
    template <template <class> class Of, class... From>
    static OfEach<Of> make_each(const From &...from)
    {
        return {Of<Record>(from...)...};
    }

private:
    template <class Of, class... Others>
    static constexpr bool is_one_of = (std::is_same_v<Of, Others> || ...);

    template <class Of>
    std::vector<Entry<Of>> &list()
    {
        return std::get<std::vector<Entry<Of>>>(lists);
    }

    std::tuple<std::vector<Entry<Record>>...> lists;
};

} // namespace ponsim

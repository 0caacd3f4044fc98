#include "store/records.h"

#include <array>
#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "model/rules/blocks.h"
#include "store/table.h"
#include "text/hex.h"

namespace ponsim
{
namespace
{

std::string cell_text(const Cell &cell)
{
    if (const auto *number = std::get_if<int64_t>(&cell)) return std::to_string(*number);
    if (const auto *text = std::get_if<std::string>(&cell)) return '"' + text->substr(0, longest_kept_text) + '"';
    return text::to_hex(bytes_of(std::get<Blob>(cell).bytes.substr(0, longest_kept_text)));
}

// Returns the table of a row, and its key as far as there is one.
std::string place_of(const Row &row, const Declaration &key)
{
    std::string place = "table " + row.table;
    for (size_t column = 0; column < key.columns().size() && column < row.cells.size(); ++column)
        place += ", " + std::string(key.columns()[column].name) + ' ' + cell_text(row.cells[column]);
    return place + ": ";
}

// The latest time of all that must not be later than the OLT's own.
struct Latest {
    ModelTime at = 0;
    size_t row = 0;
    std::string field;
};

// A Part holds the rows of the table of a part until their records are known.
template <class Record, class APart>
struct PartRows {
    struct Found {
        typename APart::Value value;
        size_t row;
        std::string place;
    };
    TableForm form;
    std::map<typename Family<Record>::Key, Found> rows = {};
};

template <class Record>
struct FamilyRows {
    using Of = Family<Record>;
    using Key = typename Of::Key;

    template <class... Each>
    static auto make_parts(const std::tuple<Each...> &all)
    {
        return std::apply(
            [](const auto &...part) { return std::tuple{PartRows<Record, Each>{form_of<Record>(part)}...}; }, all);
    }

    TableForm form = form_of<Record>();
    decltype(make_check<Record>()) problem_of = make_check<Record>();
    std::map<Key, size_t> rows = {}; // the number of the row by key
    std::map<uint32_t, size_t> rows_of_ports = {};
    std::vector<Entry<Record>> entries = {};
    decltype(make_parts(parts_of<Record>())) parts = make_parts(parts_of<Record>());
};

} // namespace

struct Records::Tables {
    explicit Tables(uint32_t of_olt) : ports(of_olt) {}

    [[noreturn]] void refuse(const std::string &problem) const { throw RowError(taken, problem); }

    template <class Key, class Columns, class Value>
    void read(const Row &row, const auto &key_columns, Key &key, const Columns &columns, Value &value)
    {
        CellReader cells(row.cells, ports);
        for_each_column(key_columns, [&](const auto &column) { column.get(cells, key); });
        for_each_column(columns, [&](const auto &column) { column.get(cells, value); });
        if (cells.latest() > latest.at) latest = {cells.latest(), taken, place + std::string(cells.field_of_latest())};
        // What is kept of this record is exactly the row.
        CellWriter again;
        for_each_column(key_columns, [&](const auto &column) { column.put(again, key); });
        for_each_column(columns, [&](const auto &column) { column.put(again, value); });
        if (again.cells != row.cells) throw StoreError("the OLT does not keep such a row");
    }

    void check_columns(const Row &row, const TableForm &form) const
    {
        const size_t columns = form.key.columns().size() + form.value.columns().size();
        if (row.cells.size() != columns)
            throw StoreError("there are " + std::to_string(row.cells.size()) + " values, but must be " +
                             std::to_string(columns));
    }

    template <class Record>
    void take_record(FamilyRows<Record> &family, const Row &row)
    {
        using Of = Family<Record>;
        check_columns(row, family.form);
        Entry<Record> entry{{}, Record{}};
        read(row, Of::key, entry.key, Of::value, *entry.record);
        if (!family.rows.try_emplace(entry.key, taken).second) throw StoreError("the row is there twice");
        if (family.rows.size() > Of::most)
            throw StoreError("there are more than " + std::to_string(Of::most) + " such rows");
        if constexpr (BoundedByPort<Record>)
            if (++family.rows_of_ports[entry.key.pon_port] > Of::most_of_port)
                throw StoreError("there are more than " + std::to_string(Of::most_of_port) + " such rows of the port");
        if (const char *problem = family.problem_of(ports, entry.key, *entry.record)) throw StoreError(problem);
        std::string problem;
        if constexpr (std::is_same_v<Record, Block>)
            problem = ponsim::problem_of(ports, entry.key, *entry.record);
        else if constexpr (std::is_same_v<Record, OnuSetting>)
            problem = ponsim::problem_of(entry.key, *entry.record);
        if (!problem.empty()) throw StoreError(problem);
        family.entries.push_back(std::move(entry));
    }

    template <class Record, class APart>
    void take_part(PartRows<Record, APart> &part, const APart &declared, const Row &row)
    {
        check_columns(row, part.form);
        typename Family<Record>::Key key{};
        typename APart::Value value{};
        read(row, Family<Record>::key, key, declared.value, value);
        if (!part.rows.try_emplace(key, value, taken, place).second) throw StoreError("the row is there twice");
    }

    // Takes the row if it is of this family. Returns whether it is.
    template <class Record>
    bool take(const Row &row)
    {
        auto &family = std::get<FamilyRows<Record>>(families);
        if (row.table == family.form.name) {
            place = place_of(row, family.form.key);
            take_record(family, row);
            return true;
        }
        return take_part_of(family, row, std::make_index_sequence<std::tuple_size_v<decltype(family.parts)>>{});
    }
    template <class Record, size_t... index>
    bool take_part_of(FamilyRows<Record> &family, const Row &row, std::index_sequence<index...>)
    {
        [[maybe_unused]] const auto take_one = [&](auto &part, const auto &declared) {
            if (row.table != part.form.name) return false;
            place = place_of(row, part.form.key);
            take_part(part, declared, row);
            return true;
        };
        return (take_one(std::get<index>(family.parts), std::get<index>(parts_of<Record>())) || ...);
    }

    template <class Record>
    void finish(Change &change)
    {
        auto &family = std::get<FamilyRows<Record>>(families);
        std::map<typename Family<Record>::Key, Record *> by_key;
        for (Entry<Record> &entry : family.entries)
            if constexpr (std::tuple_size_v<decltype(family.parts)> != 0) by_key[entry.key] = &*entry.record;
        [[maybe_unused]] const auto join = [&](auto &part, const auto &declared) {
            for (auto &[key, found] : part.rows) {
                const auto owner = by_key.find(key);
                taken = found.row;
                if (owner == by_key.end())
                    refuse(found.place + "there is no row of table " + std::string(family.form.name) + " for it");
                owner->second->*declared.member = std::move(found.value);
                auto problem_of = make_check<Record>();
                if (const char *problem = problem_of(ports, key, *owner->second)) refuse(found.place + problem);
            }
        };
        [&]<size_t... index>(std::index_sequence<index...>)
        {
            (join(std::get<index>(family.parts), std::get<index>(parts_of<Record>())), ...);
        }
        (std::make_index_sequence<std::tuple_size_v<decltype(family.parts)>>{});
        for (Entry<Record> &entry : family.entries)
            change.add(std::move(entry));
    }

    const uint32_t ports;
    size_t taken = 0; // rows before this one
    std::string place;
    Latest latest;
    Kept::OfEach<FamilyRows> families;
};

Records::Records(uint32_t ports) : tables(std::make_unique<Tables>(ports)) {}

Records::~Records() = default;

void Records::take(const Row &row)
{
    tables->place = "table " + row.table + ": ";
    try {
        bool known = false;
        Kept::each_family([&]<class Record>() { known = known || tables->take<Record>(row); });
        if (!known) tables->refuse("there is no table " + row.table);
    } catch (const RowError &) {
        throw;
    } catch (const StoreError &error) {
        tables->refuse(tables->place + error.what());
    }
    ++tables->taken;
}

Change Records::finish()
{
    Change change;
    Kept::each_family([&]<class Record>() { tables->finish<Record>(change); });
    const ModelClock *clock = change.find<ModelClock>({});
    // An OLT that has not begun has no time of its own.
    const ModelTime now = clock ? clock->now : latest_time;
    if (tables->latest.at > now)
        throw RowError(tables->latest.row, tables->latest.field + " is " + std::to_string(tables->latest.at) +
                                               ", but must not be later than the time of the OLT, " +
                                               std::to_string(now));
    return change;
}

} // namespace ponsim

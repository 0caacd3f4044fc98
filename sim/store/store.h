// What the OLT keeps, in an SQLite file of one process.
//
// A change is one transaction. When write() returns, the change is the operating system's: it survives the end of this
// process however it comes, kill -9 included. The file is written ahead (WAL, synchronous = NORMAL), so that a power
// failure may lose the last changes, but never a part of one. Forcing each change to the disk instead would make every
// request wait for the disk.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/olt/change.h"
#include "model/plant/population.h"
#include "store/statement.h"

namespace ponsim
{

class Store
{
public:
    // Opens `file`, or makes it. An empty name keeps everything in memory only. `fresh` empties the store.
    // One of an earlier version is carried over. Throws StoreError: not a store, of a later version, in use, not
    // accessible.
    Store(const std::string &file, bool fresh);

    // The settings of the OLT that the store belongs to, without what follows from its scenario's text; none when it
    // is empty.
    std::optional<Settings> settings() const;
    // Makes an empty store that of an OLT, which begins with what `first` says.
    void set_settings(const Settings &settings, const Change &first = {});

    // All that is kept, as the change of an OLT that was just set up. Throws StoreError when it does not fit the
    // settings.
    Change load() const;

    // Throws StoreError: then nothing is changed.
    void write(const Change &change);

    // Of the schema. Rows of another version mean something else.
    static int64_t version();
    // All rows but the settings, in order of table and key.
    std::vector<Row> rows() const;
    // Adds them. Throws StoreError when there is no such table, or a row does not fit it; those before it are added.
    void insert(std::span<const Row> rows);
    // Puts these in the place of all rows but the settings. Throws StoreError: then nothing is changed.
    void replace(std::span<const Row> rows);

private:
    struct Close {
        void operator()(sqlite3 *db) const;
    };
    struct Statements;
    struct Delete {
        void operator()(Statements *statements) const;
    };

    void execute(const std::string &sql) const;
    void prepare_schema(bool fresh);
    void write_rows(const Change &change);
    std::vector<std::string> tables() const;
    // All that `work` does, or nothing of it.
    void in_transaction(const std::function<void()> &work);

    std::unique_ptr<sqlite3, Close> db;
    std::unique_ptr<Statements, Delete> statements;
};

} // namespace ponsim

// The store holds what the OLT keeps, in an SQLite file that one process uses.
//
// A change is one transaction. When write() returns, the operating system has the change: it survives the end of this
// process, even by kill -9. The file is written ahead (WAL, synchronous = NORMAL). So a power failure may lose the last
// changes, but never a part of one. If each change were forced to the disk, every request would wait for the disk.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/change/change.h"
#include "model/plant/population.h"
#include "store/stored.h"

namespace ponsim
{

// An image is what a store keeps, as the bytes of a file that a store can open. The same OLT in the same state has the
// same image, whatever happened to it before.
struct StoreImage {
    std::string bytes;
};

class Store
{
public:
    // Opens `file`, or creates it. An empty name keeps everything in memory only. `fresh` empties the store. A file of
    // an earlier version is carried over. Other users lose their permissions for the file and for those that SQLite
    // keeps beside it. Throws StoreError when the file is no store, is damaged, has a later version, is in use, belongs
    // to another user or is not accessible. Then the file stays as it is.
    Store(const std::string &file, bool fresh);
    // Opens an image, and keeps everything in memory only. Throws StoreError as above.
    explicit Store(const StoreImage &image);

    StoreImage image() const;

    // Returns the settings of the OLT to which the store belongs, without what follows from its scenario's text.
    // Returns none when the store is empty.
    std::optional<Settings> settings() const;
    // Gives an empty store to an OLT, which begins with what `first` says.
    void set_settings(const Settings &settings, const Change &first = {});

    // Returns all that is kept, as the change of an OLT that was just set up. Throws StoreError when there is a row
    // that cannot be.
    Change load() const;

    // Writes a change. Throws StoreError. Then nothing is changed.
    void write(const Change &change);
    // Writes what is left of several changes, in the same way.
    void write(const Kept::Merged &changes);

    // Returns the version of the schema. Rows of another version mean something else.
    static int64_t version();
    // Returns all rows without the settings, in the order of table and key.
    std::vector<Row> rows() const;
    // Replaces all that is kept but the settings by a change and by what became of it. Throws StoreError. Then nothing
    // is changed.
    void replace(const Change &change, const Kept::Merged &since);

private:
    Store() = default;

    struct Close {
        void operator()(sqlite3 *db) const;
    };
    struct Statements;
    struct Delete {
        void operator()(Statements *statements) const;
    };

    // Opens the file, or the image in memory. A null image means none.
    void open(const std::string &file, bool fresh, const StoreImage *image);
    void execute(const std::string &sql) const;
    void take(const StoreImage &image) const;
    void prepare_schema(const std::string &file, bool fresh);
    void write_rows(const auto &entries);
    std::vector<std::string> tables() const;
    void each_row(const std::function<void(const Row &)> &visit) const;
    // Throws the error for what a file cannot have.
    [[noreturn]] void refuse(const std::string &problem) const;
    void check_tables() const;
    void check_integrity() const;
    void empty_file();
    void try_migration(int64_t version) const;
    int64_t number(const char *sql) const;
    // Does all of `work`, or nothing of it.
    void in_transaction(const std::function<void()> &work);

    std::string name; // of the file; empty: in memory
    std::unique_ptr<sqlite3, Close> db;
    std::unique_ptr<Statements, Delete> statements;
};

} // namespace ponsim

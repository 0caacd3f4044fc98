// This file reads views for the tests.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "board/datastore.h"

using Mac = std::array<uint8_t, 6>;

inline Mac parse(const std::string &text)
{
    Mac mac{};
    std::sscanf(text.c_str(), "%hhx:%hhx:%hhx:%hhx:%hhx:%hhx", &mac[0], &mac[1], &mac[2], &mac[3], &mac[4], &mac[5]);
    return mac;
}

// A View is a view that an operation delivers through its handle.
class View
{
public:
    template <class Ask>
    explicit View(Ask ask)
    {
        status_word = ask(&db);
    }
    ~View() { db_free(db); }
    View(const View &) = delete;

    uint32_t status() const { return status_word; }
    uint32_t count() const { return db_rows(db); }

    // Returns the whole document as it was received. The text is empty when there is no database.
    std::string text() const { return db_text(db, nullptr); }

    // Returns a cell, or "null" when it has no value.
    std::string text(uint32_t row, const char *column) const
    {
        const char *cell = db_get_text(db, row, column);
        return cell ? cell : "null";
    }

    // Returns a cell of the row of this MAC address, or "none" when there is no such row.
    std::string of(const std::string &mac, const char *column) const
    {
        for (uint32_t row = 0; row < count(); ++row)
            if (text(row, "mac") == mac) return text(row, column);
        return "none";
    }

private:
    db_handle *db = nullptr;
    uint32_t status_word;
};

// This file looks for ONUs on all ports by whatever somebody knows of them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "board/datastore.h"
#include "output/exit_code.h"

namespace ponctl
{

// A FoundOnu is all that is known of an ONU, by the names of the columns. "found_by" says what has the text that was
// looked for.
using FoundOnu = std::map<std::string_view, std::string>;

// A Search asks the service for all ONUs, and keeps those that have the text. It does so in run(), which returns the
// worst exit code of its questions and reports what failed.
class Search
{
public:
    explicit Search(std::string text);

    ExitCode run();
    const std::vector<FoundOnu> &found() const { return entries; }
    // Returns the message for people when no ONU has the text.
    std::string nothing_found() const;

private:
    void read_vendors(const db_handle *kinds);
    void read_loids(const db_handle *records);
    void read_onus(const db_handle *onus);
    std::string serial_of(const std::string &mac) const;

    const std::string wanted;
    std::map<std::string, std::string> vendors; // by MAC address
    std::map<std::string, std::string> loids;   // by MAC address, or by port and id
    std::vector<FoundOnu> entries;
};

} // namespace ponctl

// Who changed what by this front end, and what came of it: the audit log. Without a file of its own it is a part of the
// program's log.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "audit/bounded_log.h"
#include "audit/entry.h"

namespace front
{

class WriteLog
{
public:
    using Say = std::function<void(const std::string &line)>;

    // Throws std::runtime_error when the file cannot be used. `say` writes a line to the program's log.
    WriteLog(const std::string &file, Say say);

    // Any thread may call these.

    void note(const audit::Client &client, const audit::Wanted &wanted, std::string_view result);
    void note(const audit::Client &client, std::string_view action, std::string_view result);
    // As above, of what was refused. Of each address only some in a minute are noted, so that nobody pushes out what
    // others did.
    void note_refused(const audit::Client &client, const audit::Wanted &wanted, std::string_view reason);
    void note_refused(const audit::Client &client, std::string_view action, std::string_view reason);

private:
    void write(const std::string &line);
    bool takes_refusal(const std::string &address);

    const Say say;
    std::unique_ptr<audit::BoundedLog> log;
    std::mutex guard;
    int64_t minute = 0;
    std::map<std::string, uint32_t> refusals; // in this minute, by address
};

} // namespace front

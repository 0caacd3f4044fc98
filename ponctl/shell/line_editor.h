// Reads lines from one who types them on a terminal, with editing and history.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

class LineEditor
{
public:
    struct Completed {
        std::string typed;               // to be put in at the cursor
        std::vector<std::string> choice; // to be shown
    };
    struct Helpers {
        // Each gets the line as far as the cursor.
        std::function<Completed(std::string_view)> complete;       // for TAB
        std::function<std::string(std::string_view)> help;         // for ?, lines to be shown
        std::function<bool(std::string_view)> keeps_question_mark; // where ? is a character like any other
    };

    // The lines of earlier sessions are read from the file `history`, and new ones kept there; without a name nothing
    // is kept.
    LineEditor(const char *program, Helpers helpers, const std::filesystem::path &history);
    ~LineEditor();
    LineEditor(const LineEditor &) = delete;
    LineEditor &operator=(const LineEditor &) = delete;

    // A line without its end; nothing when there are no more. Ctrl-C starts anew.
    std::optional<std::string> read(const std::string &prompt);
    // Makes it a line of the history.
    void keep(const std::string &line);

private:
    struct Terminal;
    std::unique_ptr<Terminal> terminal;
};

} // namespace ponctl

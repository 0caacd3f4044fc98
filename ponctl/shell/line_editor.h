// A LineEditor reads lines that a user types on a terminal, with editing and history.
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
        std::string typed;               // text to insert at the cursor
        std::vector<std::string> choice; // words to show
    };
    struct Helpers {
        // Each function receives the line up to the cursor.
        std::function<Completed(std::string_view)> complete;       // for the TAB key
        std::function<std::string(std::string_view)> help;         // for the ? key; returns lines to show
        std::function<bool(std::string_view)> keeps_question_mark; // returns whether ? is an ordinary character there
    };

    // The lines of earlier sessions are read from the file `history`, and new lines are added to it. Without a name
    // nothing is kept.
    LineEditor(const char *program, Helpers helpers, const std::filesystem::path &history);
    ~LineEditor();
    LineEditor(const LineEditor &) = delete;
    LineEditor &operator=(const LineEditor &) = delete;

    // Returns a line without its newline, or nothing when there are no more lines. Ctrl-C starts a new line.
    std::optional<std::string> read(const std::string &prompt);
    // Adds the line to the history.
    void keep(const std::string &line);

private:
    struct Terminal;
    std::unique_ptr<Terminal> terminal;
};

} // namespace ponctl

// What may be typed next on a command line: all commands and options of the program, and what their arguments can be,
// as far as the catalogue, the service or the file system know it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

// Has ponctl run a command. Returns what it writes in JSON; nothing where it fails.
using Ask = std::function<std::string(const std::vector<std::string> &words)>;

struct Candidate {
    std::string word;
    std::string help;
    bool goes_on = false; // the word is not whole yet
};

struct Completion {
    std::vector<Candidate> candidates; // each starts with the word under the cursor
    std::vector<Candidate> expected;   // the argument that stands there, by its name in the help
};

// Options are candidates only where the word starts with a dash.
Completion complete(const std::vector<std::string> &before, const std::string &word, const Ask &ask);

// For a line as far as the cursor: what TAB types, and where there is a choice what it shows.
struct Tab {
    std::string typed;
    std::vector<std::string> choice;
};
Tab press_tab(std::string_view line, const Ask &ask);

// What can come next, for people, a line each.
std::string help_at(std::string_view line, const Ask &ask);

} // namespace ponctl

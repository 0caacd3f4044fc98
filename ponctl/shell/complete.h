// This file says what may be typed next on a command line: all commands and options of the program, and the values of
// their arguments, as far as the catalogue, the service or the file system knows them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

// An Ask makes ponctl run a command. It returns what the command writes in JSON, or an empty text when the command
// fails.
using Ask = std::function<std::string(const std::vector<std::string> &words)>;

struct Candidate {
    std::string word;
    std::string help;
    bool goes_on = false; // the word is not complete yet
};

// Paths says which files the word may name.
enum class Paths { none, files, folders };

struct Completion {
    std::vector<Candidate> candidates; // each starts with the word under the cursor
    std::vector<Candidate> expected;   // the argument that is possible there, by its name in the help
    Paths paths = Paths::none;         // the candidates are such files of this machine
};

// Options are candidates only when the word starts with a dash. `nested` says that the line is one of a shell or a
// batch.
Completion complete(const std::vector<std::string> &before, const std::string &word, const Ask &ask,
                    bool nested = true);

// A Tab is for a line up to the cursor. It says what the TAB key types, and what it shows when there is a choice.
struct Tab {
    std::string typed;
    std::vector<std::string> choice;
};
Tab press_tab(std::string_view line, const Ask &ask);

// Returns for people what can come next, with a line for each possibility.
std::string help_at(std::string_view line, const Ask &ask);

} // namespace ponctl

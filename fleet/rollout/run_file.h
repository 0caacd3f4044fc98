// A RunFile keeps what is known of a run, so that another process can resume it when this one ended too early: killed,
// or with the machine. It is a file for its own user only, of one line of JSON for each fact. A last line that is torn
// counts as not written.
//
// What is said to begin is on the disk before the function that writes it returns. What ended gets there with the next
// line of another kind: when the machine stops before that, the OLT is asked again, and answers as it did.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "fleet/rollout/plan.h"
#include "fleet/rollout/result.h"
#include "fleet/rollout/rollout.h"

namespace fleet
{

// A Run is what its first line says.
struct Run {
    std::string id;                 // a name; the ids of its requests begin with it
    uint64_t at = 0;                // when it began, in seconds since 1970
    std::vector<std::string> words; // of the command
    std::string selector;
    RolloutOptions options;
    Plan plan;

    bool operator==(const Run &) const = default;
};

// Returns an id that no other run has: the day, and chance.
std::string new_run_id(uint64_t now);

// An older run is not resumed: the OLTs keep what was asked of them no longer, and would do it twice.
inline constexpr uint64_t longest_run = 30ull * 24 * 3600; // seconds
// Texts of results that are longer are not kept.
inline constexpr size_t longest_kept = 256 << 10;

class RunFile
{
public:
    // Makes the file FOLDER/ID.run. Throws std::runtime_error.
    RunFile(const std::filesystem::path &folder, const Run &run);
    // Opens the file to resume a run. Throws a call::UsageError that says why it cannot be resumed: there is none, it
    // is over, it is too old, another process has it, or its text is damaged. `now` is in seconds since 1970.
    RunFile(const std::filesystem::path &folder, std::string_view id, uint64_t now);

    const Run &run() const { return what; }
    // Returns what the file said when it was opened.
    const Progress &progress() const { return before; }

    // These throw std::runtime_error when it cannot be written. Then nothing may begin.
    void begun(std::span<const std::string> olts);
    void ended(const std::string &olt, const Result &result);
    void checked(size_t wave, int32_t exit);
    // The run is over. With a reason, it was stopped and can be resumed.
    void over(const std::string &stopped);

private:
    struct Descriptor {
        Descriptor() = default;
        Descriptor(const Descriptor &) = delete;
        ~Descriptor();

        int number = -1;
    };

    void open(int flags);
    void read(std::string_view text);
    void append(const std::string &line, bool at_once = true);

    std::filesystem::path file;
    Descriptor descriptor;
    off_t size = 0; // of the whole lines in the file
    Run what;
    Progress before;
    bool is_over = false;
    std::set<std::string> kept; // digests of the results whose texts stand in the file
};

// Returns the ids of the runs in a folder, the newest first.
std::vector<std::string> runs_in(const std::filesystem::path &folder);

} // namespace fleet

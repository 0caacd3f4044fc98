// A Journal keeps what was begun at an OLT, and what came of it, over restarts and losses of power: so nothing is done
// twice because a request came twice.
//
// Its file has a line for what begins, and another for how it ended:
//
//     {"begun":"r7-north-3-91c2","digest":"5f2c..."}
//     {"ended":"r7-north-3-91c2","answer":{"outcome":{...}}}
//
// or {"undone":"r7-north-3-91c2"} when it turns out that nothing was done. Several processes may share it. When the
// file is long enough, it gets the name FILE.1, in place of what had it, and a new one begins: what stood in the one
// before is forgotten then.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "fleet/journal/file.h"

namespace fleet
{

class Journal
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr uint64_t usual_limit = 4u << 20; // bytes
    // A longer answer is not kept.
    static constexpr size_t longest_answer = 256u << 10;

    // Nothing is opened before the first turn.
    explicit Journal(std::string of, uint64_t most = usual_limit) : name(std::move(of)), limit(most) {}
    Journal(const Journal &) = delete;
    Journal &operator=(const Journal &) = delete;

    struct Entry {
        std::string digest; // of what was asked
        bool ended = false;
        std::string answer = {}; // empty: it was too long to be kept
    };

    // A Turn is the right to use the journal, which one thread of one process has at a time. Its functions throw
    // std::runtime_error when the file cannot be read, or cannot be written: nothing was written then.
    class Turn
    {
    public:
        Turn(Turn &&other) noexcept : journal(std::exchange(other.journal, nullptr)) {}
        Turn &operator=(Turn &&other) noexcept
        {
            std::swap(journal, other.journal);
            return *this;
        }
        ~Turn();

        // Returns nothing when no such id is known.
        std::optional<Entry> find(const std::string &id) const;
        // Each returns when it is on the disk.
        void begin(const std::string &id, const std::string &digest);
        void end(const std::string &id, std::string_view answer);
        // Forgets what was begun, because nothing was done.
        void undo(const std::string &id);

    private:
        friend class Journal;
        explicit Turn(Journal *of) : journal(of) {}

        Journal *journal;
    };

    // Waits for others, and returns nothing when they have it until then. Throws std::runtime_error when the file
    // cannot be used. Who has a turn takes no other one.
    std::optional<Turn> take(Clock::time_point until);

    // Returns how many lines could not be read since it was asked last, because the disk or somebody has changed them.
    // A last line that a loss of power cut is none of them.
    size_t take_damaged() { return std::exchange(damaged_lines, 0); }

private:
    struct Place {
        std::string digest;
        bool ended = false;
        bool old = false; // the answer is in FILE.1
        uint64_t answer = 0;
        uint64_t length = 0;
    };

    std::optional<Turn> try_to_take(Clock::time_point until);
    std::string old_name() const { return name + ".1"; }
    // Forgets everything, and reads FILE.1, if there is one.
    void read_old();
    // Reads what this and other processes have written since the last time.
    void read_on();
    // Returns how many bytes from there on are whole lines.
    uint64_t read(const File &from, uint64_t place, bool old);
    void note(std::string_view line, uint64_t place, bool old);
    void append(const std::string &line);
    void begin_anew();

    const std::string name;
    const uint64_t limit;
    File file;
    uint64_t known = 0; // bytes of the file that were read, or written
    size_t damaged_lines = 0;
    std::unordered_map<std::string, Place> entries;
};

} // namespace fleet

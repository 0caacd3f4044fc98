#include "fleet/journal/journal.h"

#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

#include "call/codec/errors.h"
#include "call/json.h"

namespace fleet
{
namespace
{

using call::JsonText;
using call::JsonValue;

using Texts = std::initializer_list<std::pair<std::string_view, std::string_view>>;

std::string object_of(Texts members)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    for (const auto &[name, value] : members)
        json.member(name, value);
    json->EndObject();
    return json.written();
}

// Returns the line up to the answer.
std::string start_of_end(const std::string &id)
{
    std::string line = object_of({{"ended", id}});
    line.pop_back();
    return line + ",\"answer\":";
}

// Stands for an answer that is too long.
constexpr std::string_view no_answer = "null";

// Says which file the reason is about.
template <class Act>
auto of_journal(const std::string &name, Act act)
{
    try {
        return act();
    } catch (const std::runtime_error &error) {
        throw std::runtime_error("the journal " + name + ": " + error.what());
    }
}

} // namespace

Journal::Turn::~Turn()
{
    if (journal) journal->file.unlock();
}

std::optional<Journal::Turn> Journal::take(Clock::time_point until)
{
    return of_journal(name, [&] { return try_to_take(until); });
}

std::optional<Journal::Turn> Journal::try_to_take(Clock::time_point until)
{
    constexpr std::chrono::milliseconds pause{5};
    while (true) {
        const bool is_new = !file.has_name(name);
        if (is_new) {
            file = File(name, O_CREAT);
            sync_folder_of(name);
        }
        while (!file.lock()) {
            if (Clock::now() >= until) return std::nullopt;
            std::this_thread::sleep_for(pause);
        }
        Turn turn(this); // it is given back from here on, whatever happens
        // Meanwhile another process may have given the file its other name.
        if (!file.has_name(name)) continue;
        if (is_new) read_old();
        read_on();
        return turn;
    }
}

void Journal::read_old()
{
    entries.clear();
    known = 0;
    struct stat found;
    if (lstat(old_name().c_str(), &found) == 0) read(File(old_name(), 0), 0, true);
}

// What follows the last whole line was never said to be on the disk: a loss of power, or a full disk, has cut it.
void Journal::read_on()
{
    known += read(file, known, false);
    if (file.size() > known) file.cut(known);
}

uint64_t Journal::read(const File &from, uint64_t place, bool old)
{
    const uint64_t size = from.size();
    if (size < place) throw std::runtime_error("somebody has cut it");
    const std::string content = from.read(place, size - place);
    size_t begin = 0;
    for (size_t end; (end = content.find('\n', begin)) != content.npos; begin = end + 1)
        note(std::string_view(content).substr(begin, end - begin), place + begin, old);
    return begin;
}

void Journal::note(std::string_view line, uint64_t place, bool old)
{
    std::string begun, ended, undone, digest;
    const auto text = [](std::string &into) {
        return [&into](const auto &member, const JsonValue &value) { into = call::read_text(member, value); };
    };
    try {
        call::read_object(line, "line",
                          {{"begun", text(begun)},
                           {"digest", text(digest)},
                           {"ended", text(ended)},
                           {"undone", text(undone)},
                           {"answer", [](const auto &, const JsonValue &) {}}},
                          {});
    } catch (const call::Error &) {
        ++damaged_lines;
        return;
    }
    if (!begun.empty()) {
        entries[begun] = {.digest = digest};
        return;
    }
    if (!undone.empty()) {
        entries.erase(undone);
        return;
    }
    const std::string start = start_of_end(ended);
    const auto entry = entries.find(ended);
    // What began in a file that is forgotten may have ended in one that is not.
    if (entry == entries.end()) return;
    if (!line.starts_with(start)) {
        ++damaged_lines;
        return;
    }
    const std::string_view answer = line.substr(start.size(), line.size() - start.size() - 1);
    Place &of = entry->second;
    of = {.digest = of.digest,
          .ended = true,
          .old = old,
          .answer = place + start.size(),
          .length = answer == no_answer ? 0 : answer.size()};
}

// The new file is locked before it has its name.
void Journal::begin_anew()
{
    const std::string new_name = name + ".new";
    File made(new_name, O_CREAT | O_TRUNC);
    if (!made.lock()) throw std::runtime_error("another process begins it anew");
    rename_file(name, old_name());
    rename_file(new_name, name);
    file = std::move(made);
    read_old();
}

void Journal::append(const std::string &line)
{
    file.append(line + '\n', File::Keep::for_good);
    note(line, known, false);
    known += line.size() + 1;
}

std::optional<Journal::Entry> Journal::Turn::find(const std::string &id) const
{
    const auto found = journal->entries.find(id);
    if (found == journal->entries.end()) return std::nullopt;
    const Place &place = found->second;
    return of_journal(journal->name, [&] {
        const auto answer = place.old ? File(journal->old_name(), 0).read(place.answer, place.length)
                                      : journal->file.read(place.answer, place.length);
        return Entry{.digest = place.digest, .ended = place.ended, .answer = answer};
    });
}

void Journal::Turn::begin(const std::string &id, const std::string &digest)
{
    of_journal(journal->name, [&] {
        if (journal->known > journal->limit) journal->begin_anew();
        journal->append(object_of({{"begun", id}, {"digest", digest}}));
    });
}

void Journal::Turn::end(const std::string &id, std::string_view answer)
{
    const std::string_view kept = answer.size() <= longest_answer ? answer : no_answer;
    of_journal(journal->name, [&] { journal->append(start_of_end(id).append(kept).append("}")); });
}

void Journal::Turn::undo(const std::string &id)
{
    of_journal(journal->name, [&] { journal->append(object_of({{"undone", id}})); });
}

} // namespace fleet

#include "fleet/ponbridge/outbox.h"

#include <stdexcept>
#include <utility>

#include <fcntl.h>

#include "call/codec/errors.h"
#include "call/codec/members.h"
#include "call/json.h"
#include "fleet/mqtt/connection.h"

namespace fleet
{
namespace
{

// So many messages are on their way at once.
constexpr size_t most_under_way = 100;

std::string line_of(const std::string &topic, const std::string &text)
{
    call::JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("topic", topic);
    json.member("text", text);
    json->EndObject();
    return json.written() + '\n';
}

} // namespace

Outbox::Outbox(const std::string &of, Complain tells, uint64_t most) : name(of), complain(std::move(tells)), limit(most)
{
    try {
        file = File(name, O_CREAT);
        if (!file.lock()) throw std::runtime_error("another process keeps it");
        read();
    } catch (const std::runtime_error &error) {
        throw std::runtime_error(name + ": " + error.what());
    }
}

// A last line without its end, and one that is damaged, is lost.
void Outbox::read()
{
    const std::string content = file.read(0, file.size());
    size_t begin = 0, damaged = 0;
    for (size_t end; (end = content.find('\n', begin)) != content.npos; begin = end + 1) {
        Entry entry;
        const auto into = [](std::string &text) {
            return [&text](const auto &member, const call::JsonValue &value) { text = call::read_text(member, value); };
        };
        try {
            call::read_object(std::string_view(content).substr(begin, end - begin), "line",
                              {{"topic", into(entry.topic)}, {"text", into(entry.text)}}, {"topic", "text"});
            entry.size = end - begin + 1;
            waiting += entry.size;
            entries.push_back(std::move(entry));
        } catch (const call::Error &) {
            ++damaged;
        }
    }
    file.cut(begin);
    if (damaged > 0) complain(name + ": " + std::to_string(damaged) + " lines are damaged, and lost");
}

void Outbox::append(Entry &entry)
{
    const std::string line = line_of(entry.topic, entry.text);
    if (waiting + line.size() > limit) throw std::runtime_error("too much waits for the broker");
    if (file.size() + line.size() > 2 * limit) write_anew();
    file.append(line, File::Keep::until_power_fails);
    entry.size = line.size();
    waiting += entry.size;
}

void Outbox::write_anew()
{
    std::string content;
    for (const Entry &entry : entries)
        if (!entry.done) content += line_of(entry.topic, entry.text);
    const std::string new_name = name + ".new";
    File made(new_name, O_CREAT | O_TRUNC);
    if (!made.lock()) throw std::runtime_error("another process keeps it");
    made.append(content, File::Keep::for_good);
    rename_file(new_name, name);
    file = std::move(made);
}

void Outbox::add(const std::string &topic, const std::string &text)
{
    const std::lock_guard lock(guard);
    Entry entry{.topic = topic, .text = text};
    try {
        append(entry);
    } catch (const std::runtime_error &error) {
        if (losses++ == 0) complain(name + ": " + error.what() + ": what happens is lost from now on");
        return;
    }
    entries.push_back(std::move(entry));
    if (const uint64_t count = std::exchange(losses, 0))
        complain(name + ": it is kept again what happens; " + std::to_string(count) + " messages are lost");
    publish_on();
}

void Outbox::publish_on()
{
    while (connection && published < entries.size() && answers.size() < most_under_way) {
        Entry &entry = entries[published];
        int number = 0;
        try {
            number = connection->publish({.topic = entry.topic, .payload = entry.text});
            if (number == 0) return;
            answers[number] = first + published;
        } catch (const std::runtime_error &error) {
            complain(error.what());
            entry.done = true;
        }
        ++published;
    }
    forget_done();
}

void Outbox::connected(Connection &of)
{
    const std::lock_guard lock(guard);
    connection = &of;
    publish_on();
}

void Outbox::lost()
{
    const std::lock_guard lock(guard);
    connection = nullptr;
    answers.clear();
    published = 0;
    // What is done stands between others only until those are published again.
    std::erase_if(entries, [this](const Entry &entry) {
        if (entry.done) waiting -= entry.size;
        return entry.done;
    });
}

bool Outbox::acknowledged(int number, const std::string &error)
{
    const std::lock_guard lock(guard);
    const auto found = answers.find(number);
    if (found == answers.end()) return false;
    Entry &entry = entries[found->second - first];
    if (!error.empty()) complain("the broker does not take a message to " + entry.topic + ": " + error);
    entry.done = true;
    answers.erase(found);
    publish_on();
    return true;
}

void Outbox::forget_done()
{
    while (!entries.empty() && entries.front().done) {
        waiting -= entries.front().size;
        entries.pop_front();
        ++first;
        --published;
    }
    if (!entries.empty() || file.size() == 0) return;
    try {
        file.cut(0);
    } catch (const std::runtime_error &error) {
        complain(name + ": " + error.what());
    }
}

size_t Outbox::size() const
{
    const std::lock_guard lock(guard);
    return entries.size();
}

} // namespace fleet

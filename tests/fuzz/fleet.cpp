// What is published to bridges and clients of a fleet: requests, answers, lines of ssh, inventories, and selectors.
#include <string>

#include "call/codec/errors.h"
#include "fleet/protocol/frame.h"
#include "fleet/protocol/message.h"
#include "fleet/protocol/topics.h"
#include "fleet/selection/inventory.h"
#include "fleet/selection/selector.h"
#include "input.h"
#include "target.h"

namespace
{

using namespace fleet;

void read_request(const std::string &text)
{
    const Request request = request_from_json(text);
    const std::string written = to_json(request);
    fuzz::require(to_json(request_from_json(written)) == written, "a request is read as it was written");
    fuzz::require(digest_of(request) == digest_of(request_from_json(written)), "equal requests have equal digests");
}

// The first byte of an answer chooses the command that it answers.
void read_answer(const std::string &text)
{
    if (text.empty()) return;
    const std::span commands = catalogue::commands();
    const catalogue::Command &command = commands[static_cast<uint8_t>(text[0]) % commands.size()];
    call::RecordCall asked{command.channel, catalogue::Call::get, command.channel->record,
                           call::Bytes(command.channel->record->size), 0};
    const Request request{.id = {}, .deadline = 0, .what = asked};
    const Answer answer = answer_from_json(text.substr(1), request);
    const auto *outcome = std::get_if<call::RecordOutcome>(&answer);
    if (!outcome) return;
    const std::string written = answer_of(*outcome, asked);
    const Answer again = answer_from_json(written, request);
    fuzz::require(std::get<call::RecordOutcome>(again).response == outcome->response,
                  "an answer is read as it was written");
}

void read_lines(const std::string &text)
{
    try {
        hello_from_line(text);
    } catch (const call::UsageError &) {
        const AnswerFrame frame = answer_from_line(text);
        fuzz::require(answer_from_line(to_line(frame)) == frame, "a line is read as it was written");
    }
}

void read_frame(const std::string &text)
{
    const RequestFrame frame = request_from_line(text);
    fuzz::require(request_from_line(to_line(frame)) == frame, "a line is read as it was written");
}

void read_inventory(const std::string &text)
{
    const Inventory inventory = inventory_from_json(text);
    fuzz::require(inventory_from_json(to_json(inventory)) == inventory, "an inventory is read as it was written");
}

void choose(const std::string &text)
{
    const Olt olt{.inventory = {.olt = "north-3", .bridge = "hut-7", .labels = {{"site", "north"}}}, .online = true};
    Selector(text).matches(olt);
    is_single_name(text);
}

void read_topics(const std::string &text)
{
    const Topics topics;
    if (const auto topic = topics.read_call(text))
        fuzz::require(topics.call(*topic) == text, "a topic is read as it was written");
    topics.is_reply_to("ann", text);
    topics.olt_of(text);
    topics.bridge_of(text);
}

} // namespace

// The first byte of an input says what the rest of it is.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    constexpr void (*readers[])(const std::string &) = {read_request,   read_answer, read_lines, read_frame,
                                                        read_inventory, choose,      read_topics};
    const size_t reader = input.take<uint8_t>() % std::size(readers);
    const std::span<const uint8_t> rest = input.take_bytes(size);
    try {
        readers[reader](std::string(rest.begin(), rest.end()));
    } catch (const call::UsageError &) {
        return 0;
    }
    return 0;
}

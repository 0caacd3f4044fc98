// Packets of the transport: those that a service receives, and those that a client receives as answers.
#include <algorithm>
#include <memory>

#include "answering.h"
#include "frame.h"
#include "input.h"
#include "target.h"

namespace
{

using namespace board;

constexpr uint32_t module = 6;

// Reads all of the request, and answers with its bytes.
void echo(void *, const board_request *request, board_answer *answer)
{
    fuzz::require(request->length <= IPC_MAX_LENGTH, "a request has room in a packet");
    fuzz::require(board_answer_data(answer, request->data, request->length) == 0, "an answer has room for a request");
}

// Puts what arrived into the frame that receives it, as far as there is room.
void put(std::span<const uint8_t> packet, auto &frame)
{
    std::ranges::copy(packet.first(std::min(packet.size(), sizeof frame)), reinterpret_cast<uint8_t *>(&frame));
}

void serve(std::span<const uint8_t> packet, bool datagram)
{
    static const board_service_config config = [] {
        board_service_config echoes{};
        echoes.module = module;
        echoes.handler = echo;
        return echoes;
    }();
    static Answering answering(config);
    const auto frame = std::make_unique<RequestFrame>();
    put(packet, *frame);
    const auto answer = std::make_unique<board_answer>(datagram);
    Head refusal{};
    const Peer peer{{1, 1000, 1000}};
    if (answering.handle(*frame, packet.size(), datagram, peer, *answer, refusal)) {
        fuzz::require(answer->frame.header.length == frame->header.length, "the answer is as long as the request");
        fuzz::require(answers(answer->frame, answer->frame.size(), frame->header), "an answer is taken by its client");
    } else {
        fuzz::require(refusal.kind == Kind::refusal && refusal.detail != 0, "what is refused is refused for a reason");
    }
}

void receive(std::span<const uint8_t> packet)
{
    const auto answer = std::make_unique<AnswerFrame>();
    put(packet, *answer);
    const RequestHeader request{.head = {.kind = Kind::request, .detail = BOARD_CALL_GET},
                                .module = module,
                                .msg_type = 232,
                                .sequence = 1,
                                .length = 0,
                                .allowed = 0};
    if (answers(*answer, packet.size(), request))
        fuzz::require(answer->size() <= sizeof *answer, "an answer that is taken is all there");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    const auto side = input.take<uint8_t>();
    const std::span<const uint8_t> packet = input.take_bytes(size);
    if (side % 2)
        receive(packet);
    else
        serve(packet, side & 2);
    return 0;
}

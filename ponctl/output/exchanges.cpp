#include "output/exchanges.h"

#include "call/codec/decode.h"
#include "call/exchange.h"
#include "output/bytes.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/output.h"

namespace ponctl
{
namespace
{

// Returns the bytes of a request as they are shown.
Bytes shown_request(const Exchange &exchange)
{
    return mode().secrets ? exchange.request
                          : without_secrets(*exchange.record, {exchange.channel, exchange.call}, exchange.request);
}

void write_request(Json &json, const KeptRequest &kept)
{
    const Exchange &exchange = kept.exchange;
    const Bytes request = shown_request(exchange);
    json->StartObject();
    json.member("channel", exchange.channel->name);
    json.member("call", catalogue::to_text(exchange.call));
    json.member("length", static_cast<uint32_t>(exchange.request.size()));
    json.key("request");
    json.record(read_record(*exchange.record, {exchange.channel, exchange.call}, request));
    json.member("bytes", text::to_hex(without_trailing_zeros(request)));
    json.key("affects");
    write_hits(json, kept.hits);
    json->EndObject();
}

void print_request(const Output &output, const Exchange &exchange)
{
    const Bytes request = shown_request(exchange);
    const Reading reading = read_record(*exchange.record, {exchange.channel, exchange.call}, request);
    if (output.format == Format::table) {
        std::fprintf(output.stream, "not sent: %s on %s, %zu bytes\n",
                     std::string(catalogue::to_text(exchange.call)).c_str(),
                     std::string(exchange.channel->name).c_str(), exchange.request.size());
        return print_fields(output, reading);
    }
    print_bytes(output, request, &reading);
}

} // namespace

void print_requests(const Output &output, std::span<const KeptRequest> requests, const std::string &changes)
{
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const KeptRequest &request : requests)
            write_request(json, request);
        json->EndArray();
        return;
    }
    if (!changes.empty() && output.format == Format::table) std::fprintf(output.stream, "%s\n", changes.c_str());
    if (requests.empty()) std::fputs("nothing would be sent\n", output.stream);
    for (const KeptRequest &request : requests) {
        if (&request != &requests.front()) std::fputc('\n', output.stream);
        print_request(output, request.exchange);
    }
}

void print_ending(const Output &output, const Exchange &last, int exit_code)
{
    Json json(output.stream);
    json->StartObject();
    json.member("exit_code", static_cast<uint32_t>(exit_code));
    json.ipc_result(last.result);
    json.status(last.status);
    json->EndObject();
}

} // namespace ponctl

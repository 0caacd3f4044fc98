#include "fake_service.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue.h"

namespace
{

rapidjson::Value some_value(catalogue::ColumnType type)
{
    switch (type) {
    case catalogue::ColumnType::u32:
    case catalogue::ColumnType::u64:
    case catalogue::ColumnType::real:
        return rapidjson::Value(0);
    case catalogue::ColumnType::boolean:
        return rapidjson::Value(false);
    case catalogue::ColumnType::mac:
        return rapidjson::Value("00:00:00:00:00:00");
    case catalogue::ColumnType::text:
        return rapidjson::Value("");
    }
    return {};
}

} // namespace

uint32_t Received::word(size_t offset) const
{
    uint32_t value;
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

std::string Received::text(size_t offset) const
{
    return reinterpret_cast<const char *>(record.data() + offset);
}

uint64_t Received::number(std::string_view name) const
{
    const catalogue::Record &kind = *catalogue::find_channel(channel)->record;
    const catalogue::Command *command =
        catalogue::find_command(channel, word(kind.command->offset), static_cast<catalogue::Call>(call));
    const catalogue::Layout *layout = command ? catalogue::find_layout(*command) : nullptr;
    const catalogue::Field *field = layout ? catalogue::find_field(layout->fields, name) : nullptr;
    if (!field) field = catalogue::find_field(kind.fields, name);
    if (!field) throw std::runtime_error("no field " + std::string(name));
    uint64_t bytes = 0;
    auto *const number = reinterpret_cast<uint8_t *>(&bytes);
    // On a little-endian host the low bytes of the number come first, on a big-endian host they come last.
    const size_t start = std::endian::native == std::endian::big ? sizeof bytes - field->size : 0;
    std::memcpy(number + start, record.data() + field->offset, field->size);
    return bytes;
}

std::string Received::mac() const
{
    char mac[18];
    std::snprintf(mac, sizeof mac, "%02x:%02x:%02x:%02x:%02x:%02x", record[17], record[18], record[19], record[20],
                  record[21], record[22]);
    return mac;
}

FakeService::FakeService(Handler answering) : handler(std::move(answering))
{
    char path[] = "/tmp/ponctl_test_XXXXXX";
    if (!mkdtemp(path)) throw std::runtime_error("no temporary folder");
    directory = path;
    board_service_config config{};
    config.module = catalogue::module;
    config.directory = directory.c_str();
    config.handler = handle;
    config.context = this;
    service = board_service_start(&config);
    if (!service) throw std::runtime_error("the service does not start");
}

FakeService::~FakeService()
{
    board_service_stop(service);
    std::filesystem::remove_all(directory);
}

void FakeService::handle(void *context, const board_request *request, board_answer *answer)
{
    auto &self = *static_cast<FakeService *>(context);
    const auto *bytes = static_cast<const uint8_t *>(request->data);
    {
        const std::lock_guard lock(self.mutex);
        self.requests.push_back({request->call, request->msg_type, request->allowed, {bytes, bytes + request->length}});
    }
    if (self.handler) self.handler(*request, answer);
}

std::vector<Received> FakeService::settings() const
{
    std::vector<Received> found = received();
    std::erase_if(found, [](const Received &request) {
        return request.call == BOARD_CALL_GET || request.call == BOARD_CALL_DGRAM_GET;
    });
    return found;
}

std::vector<Received> FakeService::received() const
{
    const std::lock_guard lock(mutex);
    return requests;
}

Finished FakeService::ponctl(std::vector<std::string> arguments, int output, int input, int error) const
{
    arguments.insert(arguments.begin(), {"--socket-dir", directory});
    return ::ponctl(arguments, output, input, error);
}

FakeService::Handler status(uint32_t word)
{
    return [word](const board_request &, board_answer *answer) { board_answer_status(answer, word); };
}

FakeService::Handler result(uint32_t key, std::string json)
{
    return [key, json = std::move(json)](const board_request &, board_answer *answer) {
        board_answer_result(answer, key, json.data(), static_cast<uint32_t>(json.size()));
    };
}

FakeService::Handler rows(uint32_t key, const std::string &json)
{
    return result(key, whole_rows(key, json));
}

FakeService::Handler no_rows(std::vector<uint8_t> data)
{
    return [answer = bytes(std::move(data))](const board_request &given, board_answer *answering) {
        const catalogue::Field &command = *catalogue::find_channel(given.msg_type)->record->command;
        uint32_t code;
        std::memcpy(&code, static_cast<const uint8_t *>(given.data) + command.offset, sizeof code);
        answer(given, answering);
        board_answer_result(answering, code, "[]", 2);
    };
}

std::string whole_rows(uint32_t key, const std::string &json)
{
    rapidjson::Document document = parsed(json);
    const auto has_columns = [&document](const catalogue::View &view) {
        for (const auto &member : document.GetArray()[0].GetObject())
            if (std::ranges::find(view.columns, member.name.GetString(), &catalogue::Column::name) ==
                view.columns.end())
                return false;
        return true;
    };
    if (document.Empty()) return json;
    const catalogue::View *view = nullptr;
    for (const catalogue::View &each : catalogue::views())
        for (const catalogue::Command *command : each.commands)
            if (command->code == key && has_columns(each)) view = &each;
    if (!view) throw std::runtime_error("no view has such rows under " + std::to_string(key));
    auto &memory = document.GetAllocator();
    for (rapidjson::Value &row : document.GetArray())
        for (const catalogue::Column &column : view->columns) {
            if (row.HasMember(column.name.data())) continue;
            rapidjson::Value value;
            if (!column.nullable) value = some_value(column.type);
            row.AddMember(rapidjson::StringRef(column.name.data()), value, memory);
        }
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    document.Accept(writer);
    return text.GetString();
}

FakeService::Handler bytes(std::vector<uint8_t> data)
{
    return [data = std::move(data)](const board_request &, board_answer *answer) {
        board_answer_data(answer, data.data(), static_cast<uint32_t>(data.size()));
    };
}

FakeService::Handler by_command(std::map<uint32_t, FakeService::Handler> handlers)
{
    return [handlers = std::move(handlers)](const board_request &request, board_answer *answer) {
        const catalogue::Field &command = *catalogue::find_channel(request.msg_type)->record->command;
        uint32_t code;
        std::memcpy(&code, static_cast<const uint8_t *>(request.data) + command.offset, sizeof code);
        if (const auto handler = handlers.find(code); handler != handlers.end()) handler->second(request, answer);
    };
}

std::vector<uint8_t> pon_record(const std::map<size_t, uint32_t> &words)
{
    std::vector<uint8_t> record(944);
    for (const auto &[offset, word] : words)
        std::memcpy(&record[offset], &word, sizeof word);
    return record;
}

std::vector<uint8_t> answer_to(const char *command, const std::map<std::string, int64_t> &numbers)
{
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command(command), true);
    std::vector<uint8_t> record(layout.record->size);
    for (const auto &[name, number] : numbers) {
        const catalogue::Field *field = catalogue::find_field(layout.fields, name);
        if (!field) throw std::runtime_error("no field " + name);
        const auto *bytes = reinterpret_cast<const uint8_t *>(&number);
        const size_t start = std::endian::native == std::endian::big ? sizeof number - field->size : 0;
        std::memcpy(&record[field->offset], bytes + start, field->size);
    }
    return record;
}

rapidjson::Document parsed(const std::string &text)
{
    rapidjson::Document document;
    document.Parse(text.c_str());
    if (document.HasParseError()) throw std::runtime_error("not JSON: " + text);
    return document;
}

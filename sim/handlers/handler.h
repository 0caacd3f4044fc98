// The service knows these commands. A handler reads a request and the OLT, and says what is to be done. The simulator
// does that and keeps it.
//
// A family of commands is a file of this folder with a table of its own. table.cpp lists the tables.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>

#include "bsp_pon.h"
#include "catalogue.h"
#include "model/olt/olt.h"
#include "place.h"
#include "text/sha256.h"

namespace ponsim
{

class KeptRows;

// No longer result reaches a caller. The length is in bytes.
inline constexpr size_t max_result = 1048576;

// A request with a payload has so many bytes beside the payload.
inline constexpr uint32_t payload_header = 28;

// A Request has a record of the length of its channel's records. When the channel's records have a payload, the length
// can be any that is allowed there.
struct Request {
    const void *record;
    uint32_t length;
    KeptRows *rows = nullptr;             // null: no rows are kept
    std::string_view upgrade_folder = {}; // files of upgrade types are read from there

    // Returns what follows the header of a record with a payload.
    std::string_view payload() const
    {
        return {static_cast<const char *>(record) + offsetof(bsp_profile_msg, data), length - payload_header};
    }

    // Returns the record, or a part of it at an offset.
    template <class Value>
    Value read(uint32_t offset = 0) const
    {
        return get(layout::At<Value>{offset});
    }
    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(static_cast<const char *>(record), at);
    }
};

// A ResultFile is a result that callers read as a file. The answer names it by this name, which has room in the
// shortest answer.
inline constexpr std::string_view result_file_name = "board:file";

struct ResultFile {
    std::string content;
    uint32_t name_at; // offset in the answer, where it ends with a NUL
};

// A request can ask for something to be done with the OLT's configuration, which is everything kept of the OLT. The
// simulator has it, and handlers do not.
struct WriteConfiguration { // writes it into a file
    uint32_t size_at;       // offset in the answer of the file's size in bytes, a word
    uint32_t name_at;       // offset in the answer of the file's name
};
struct ReceiveConfiguration { // receives a part of a text to load
    text::Sha256 digest;      // of the whole text
    uint32_t offset;
    uint32_t total; // bytes of the whole text
    std::string bytes;
};
struct LoadConfiguration { // loads the text that was received from the user
    text::Sha256 digest;
};

// No longer text is received. The length is in bytes.
inline constexpr uint32_t longest_upload = 64 * 1024 * 1024;

using ConfigurationTask = std::variant<std::monostate, WriteConfiguration, ReceiveConfiguration, LoadConfiguration>;

struct Outcome {
    uint32_t status;
    Change change = {};                     // what becomes different; nothing unless the status is BSP_OK
    std::optional<std::string> result = {}; // the table of a view
    std::optional<std::string> answer = {}; // for a get call: the bytes of the answer; none: those of the request's
                                            // record
    std::string problem = {};               // for the service's log
    std::optional<ResultFile> file = {};
    ConfigurationTask configuration = {};
};

struct Handler {
    uint32_t channel;
    uint32_t command;
    Outcome (*handle)(const Olt &olt, const Request &request);
    std::optional<catalogue::Call> call = {}; // when two commands share a code: the call of this one
};

constexpr std::array<Handler, 1> rows(const Handler &handler)
{
    return {handler};
}
template <size_t size>
constexpr std::array<Handler, size> rows(const std::array<Handler, size> &handlers)
{
    return handlers;
}
// Returns the table of a family. The parts are handlers, and groups of handlers that belong together.
template <class... Parts>
constexpr auto family(const Parts &...parts)
{
    std::array<Handler, (std::tuple_size_v<decltype(rows(parts))> + ...)> handlers{};
    size_t count = 0;
    const auto add = [&](const auto &group) {
        for (const Handler &handler : group)
            handlers[count++] = handler;
    };
    (add(rows(parts)), ...);
    return handlers;
}

std::span<const Handler> alarm_handlers();
std::span<const Handler> authentication_handlers();
std::span<const Handler> binding_handlers();
std::span<const Handler> bulk_handlers();
std::span<const Handler> chip_handlers();
std::span<const Handler> configuration_handlers();
std::span<const Handler> device_handlers();
std::span<const Handler> fdb_handlers();
std::span<const Handler> list_handlers();
std::span<const Handler> p2p_handlers();
std::span<const Handler> profiles_handlers();
std::span<const Handler> sla_handlers();
std::span<const Handler> loop_handlers();
std::span<const Handler> onu_config_handlers();
std::span<const Handler> onu_gateway_handlers();
std::span<const Handler> onu_identity_handlers();
std::span<const Handler> onu_images_handlers();
std::span<const Handler> onu_multicast_handlers();
std::span<const Handler> onu_performance_handlers();
std::span<const Handler> onu_services_handlers();
std::span<const Handler> onu_uni_handlers();
std::span<const Handler> optics_handlers();
std::span<const Handler> upgrade_handlers();
std::span<const Handler> view_handlers();

// Returns null when the service does not know the command, or does not know it by this call.
const Handler *find_handler(uint32_t channel, uint32_t command, catalogue::Call call);

} // namespace ponsim

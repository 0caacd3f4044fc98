// The contract as data, for the tool, the simulated service, the trace decoder and the tests. The tables behind these
// functions are generated from the TOML files of this folder; nothing here needs the library itself.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace catalogue
{

// The module number of every exchange.
extern const uint32_t module;

enum class FieldType : uint8_t { u8, u16, s16, u32, s32, u64, mac, text, bytes, idset };

struct Field {
    std::string_view name;
    FieldType type;
    uint32_t offset;
    uint32_t size; // bytes up to the end of the field
    std::string_view unit;
    double scale; // of a number: what one is, in the unit
    std::string_view brief;
};

struct Record {
    std::string_view name;
    uint32_t size;
    const Field *command; // null: the record carries no command code
    const Field *payload; // null: a request is `size` bytes long; else its payload and 28 bytes
    std::span<const Field> fields;
    std::string_view brief;
};

struct Channel {
    std::string_view name;
    uint32_t type;
    const Record *record;
    std::string_view brief;
};

// What a command does to the network: for confirmation, access and audit.
enum class Class : uint8_t { read, write, service_affecting };

enum class Call : uint8_t { set, get, dgram_set, dgram_get };

struct Command {
    std::string_view name;
    uint32_t code;
    const Channel *channel;
    Class impact;
    std::optional<Call> call; // of two commands that share a code: the call that this one is for
    std::string_view brief;
};

struct Status {
    std::string_view name;
    uint32_t value;
    bool of_library; // else of the simulated service
    std::string_view brief;
};

// The contents that the simulated service gives to an opaque part of a record.
struct Layout {
    std::string_view name;
    const Record *record;
    std::span<const Command *const> commands;
    std::span<const Field> fields;
    bool of_answer; // else of the request
    std::string_view brief;
};

enum class ColumnType : uint8_t { u32, u64, text, mac, boolean, real };

struct Column {
    std::string_view name;
    std::string_view title;
    ColumnType type;
    bool nullable; // null where it does not apply to a row
    std::string_view unit;
    std::string_view brief;
};

struct View {
    std::string_view name;
    std::span<const Command *const> commands;
    std::span<const Column> columns;
    std::string_view brief;
};

enum class Failure : uint8_t {
    report, // log, BSP_ERR_IPC
    pass,   // log, the IPC value
    silent  // the IPC value
};
enum class Request : uint8_t {
    built,  // from the arguments
    as_is,  // the caller's record itself
    copied, // a copy of the caller's record, with the operation's command code
    stamped // the caller's record itself, after the operation's command code was written into it
};
enum class Answer : uint8_t {
    none,
    own,      // into a buffer of the library
    in_place, // into the caller's record
    caller    // into a buffer of the caller
};

enum class ArgumentType : uint8_t {
    u32,
    u8,  // goes out zero-extended where its field is a word
    u16, // the same; of it only the low byte where its field is one
    mac,
    text,
    block,
    length,
    length_at, // a pointer to a length
    record,
    db,
    text_out,
    u8_out,
    u16_out, // a byte of the answer, zero-extended
    u32_out,
    block_out,
    block_inout, // goes out, and is overwritten by the answer
    response,
    pblock_out // receives a block of the board's memory
};

// How a result database is made.
enum class Source : uint8_t {
    none,
    shmem, // from shared memory, by its key
    text,  // from a text in the answer
    file   // from a file that the answer names, and that is removed
};

// What names a result in shared memory.
enum class Key : uint8_t {
    none,
    argument, // the argument that states the command
    command,  // the operation's command
    request   // the command code that stands in the request after the exchange
};

struct Argument {
    std::string_view name;
    ArgumentType type;
    bool required;           // null gives BSP_ERR_PARAM, nothing sent
    bool optional;           // null is allowed and means "none"
    bool dropped;            // of a db: it is made and never handed out
    const Field *field;      // where it goes in the request, or where it comes from in the answer
    uint32_t size;           // of a block that always has as many bytes; else 0
    uint32_t skip;           // what comes out of an answer goes as many bytes behind the pointer
    int other;               // the index of the block that a length measures, of the argument that keys a db; else -1
    Source source;           // of a db
    Key key;                 // of a db from shared memory
    uint32_t bound;          // of a db from shared memory
    std::string_view logged; // of a db from a text or file: the format of the line that logs it; or empty
    std::span<const Field *const> picked; // of a record that is not sent: what goes into the request of it
    std::string_view brief;
};

// What of an operation this catalogue cannot say. A test of its own covers it.
enum class Facet : uint8_t { request, status, null, answer };
struct Oddity {
    Facet facet;
    std::string_view brief;
};

// A word that is the same in every request.
struct Constant {
    const Field *field;
    uint32_t value;
};

struct Operation {
    std::string_view name;
    std::string_view family;
    std::string_view brief;
    std::string_view notes;
    const Channel *channel;
    const Record *record;
    const Command *command; // null: the caller states the code
    Class impact;
    Call call;
    Failure failure;
    Request request;
    Answer answer;
    const Record *response;     // how the answer reads; null: there is none
    uint32_t response_size;     // bytes of the response buffer; all of one of the library's own is cleared
    uint32_t preset;            // of the response length word
    std::string_view logged_as; // its own name, or that of the operation that it goes through
    std::span<const Constant> constants;
    std::span<const Oddity> odd;
    std::span<const Argument> arguments;
};

// A function that makes no request.
struct Function {
    std::string_view name;
    std::string_view family;
    std::string_view brief;
    std::string_view notes;
    std::string_view prototype;
};

std::span<const Record> records();
std::span<const Channel> channels();
std::span<const Command> commands();
std::span<const Status> statuses();
std::span<const Layout> layouts();
std::span<const View> views();
std::span<const Operation> operations();
std::span<const Function> functions();

// Each returns null where there is none. Channels and commands are found by name or by number.
const Record *find_record(std::string_view name);
const Channel *find_channel(std::string_view name);
const Channel *find_channel(uint32_t type);
const Command *find_command(std::string_view name);
// Of two that share a code, the one for `call`; without a call, the first.
const Command *find_command(uint32_t channel_type, uint32_t code, std::optional<Call> call = std::nullopt);
const Status *find_status(uint32_t value);
const Layout *find_layout(const Command &command, bool of_answer = false);
const View *find_view(const Command &command);
const Operation *find_operation(std::string_view name);
const Function *find_function(std::string_view name);
const Field *find_field(std::span<const Field> fields, std::string_view name);
const Oddity *find_oddity(const Operation &operation, Facet facet);

std::string_view to_text(Class impact);
std::string_view to_text(Call call);
std::string_view to_text(FieldType type);

} // namespace catalogue

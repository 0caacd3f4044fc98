// This file gives the contract as data to the tool, the simulated service, the trace decoder and the tests. The tables
// behind these functions are generated from the TOML files of this folder. Nothing here needs the library itself.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace catalogue
{

// This is the module number of every exchange.
extern const uint32_t module;

enum class FieldType : uint8_t { u8, u16, s16, u32, s32, u64, mac, text, bytes, idset, ipv4, oui, date, list, ports };

// A Named is a value of a number, or one of its bits, that has a name.
struct Named {
    std::string_view name;
    int64_t number;
};

// A Range says which numbers a service takes, in the field's unit.
struct Range {
    int64_t least;
    int64_t greatest;
};

// A Notation says how people write bytes that hold a number, with the highest byte first.
enum class Notation : uint8_t { number, hexadecimal, mac, ipv4 };

// A Form is the notation of bytes where the field that decides about them has this value.
struct Form {
    std::string_view value;
    Notation notation;
};

struct Field {
    std::string_view name;
    FieldType type;
    uint32_t offset;
    uint32_t size; // bytes up to the end of the field
    std::string_view unit;
    double scale; // of a number: the value of one count, in the unit
    std::string_view brief;
    std::span<const Named> values = {};        // names of its numbers
    std::span<const Named> flags = {};         // names of its bits; of each, the number is that of the bit
    std::optional<Range> range = std::nullopt; // of a number that is sent
    bool hexadecimal = false;                  // people write the number so
    // Of a setting: the field has a meaning only where another one, the condition, has one of these values. It is 0
    // elsewhere. Without a condition it always has.
    std::string_view condition = {};
    std::span<const std::string_view> where = {};
    // Of a repeated field: its number among them, from 1 on, and the field that says how many of them count. Without
    // such a field all count.
    uint32_t place = 0;
    std::string_view counter = {};
    // Of a field of one of several parts: the field that says how many parts there are, and the number of its own. Of a
    // repeated field it is the one with the same place, and has no number here.
    std::string_view whole = {};
    uint32_t part = 0;
    // Of bytes that mean what the value of another field says: that field, and their notations. With any other value of
    // that field they are a number. Of a repeated field it is the one with the same place, too.
    std::string_view decider = {};
    std::span<const Form> forms = {};
    bool secret = false; // it is hidden from people who did not ask for it
};

struct Record {
    std::string_view name;
    uint32_t size;
    const Field *command; // null: the record carries no command code
    const Field *payload; // null: a request is `size` bytes long; otherwise it is as long as its payload and 28 bytes
    std::span<const Field> fields;
    std::string_view brief;
};

struct Channel {
    std::string_view name;
    uint32_t type;
    const Record *record;
    std::string_view brief;
};

// A Class says what a command does to the network. Confirmation, access rules and audit use it.
enum class Class : uint8_t { read, write, service_affecting };

enum class Call : uint8_t { set, get, dgram_set, dgram_get };

struct Command {
    std::string_view name;
    uint32_t code;
    const Channel *channel;
    Class impact;
    std::optional<Call> call; // of two commands that share a code: the call that belongs to this one
    std::string_view brief;
};

struct Status {
    std::string_view name;
    uint32_t value;
    bool of_library; // false: it is a word of the simulated service
    std::string_view brief;
};

// A Layout describes what the simulated service puts into an opaque part of a record.
struct Layout {
    std::string_view name;
    const Record *record;
    std::span<const Command *const> commands;
    std::span<const Field> fields;
    bool of_answer; // false: it is a layout of the request
    std::string_view brief;
    // Of a setting: the command whose answer says how it stands now. When it is null, nothing says it.
    const Command *present = nullptr;
    // Of a setting that starts from nothing: what becomes of the fields that a request leaves out.
    std::string_view left_out = {};
    // It describes what the configuration keeps of a setting, which starts at the offset of the first field. Without
    // such a layout, that is what the request has. Of two commands that share a code, the index of a block tells which
    // one it is of.
    bool kept = false;
    std::optional<uint32_t> index = std::nullopt;
};

enum class ColumnType : uint8_t { u32, u64, text, mac, boolean, real };

// A column of low priority is left out first where there is no room for all, one of high priority last.
enum class Priority { low, normal, high };

struct Column {
    std::string_view name;
    std::string_view title;
    ColumnType type;
    bool nullable; // the cell is null where the column does not apply to a row
    std::string_view unit;
    std::string_view brief;
    bool hexadecimal = false; // people write the number so
    Priority priority = Priority::normal;
};

struct View {
    std::string_view name;
    std::span<const Command *const> commands;
    std::span<const Column> columns;
    std::string_view brief;
    size_t order = 0; // so many of the first columns put the rows in order; 0: the service does
};

enum class ErrorPolicy : uint8_t {
    report, // logs the failure and returns BSP_ERR_IPC
    pass,   // logs the failure and returns the IPC value
    silent  // returns the IPC value
};
enum class RequestForm : uint8_t {
    built,  // from the arguments
    as_is,  // the caller's record itself
    copied, // a copy of the caller's record, with the operation's command code
    stamped // the caller's record itself, after the operation's command code was written into it
};
enum class AnswerForm : uint8_t {
    none,
    own,      // into a buffer of the library
    in_place, // into the caller's record
    caller    // into a buffer of the caller
};

enum class ArgumentType : uint8_t {
    u32,
    u8,  // sent zero-extended where its field is a word
    u16, // as above; only its low byte is sent where its field is a byte
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
    block_inout, // is sent, and is then overwritten by the answer
    response,
    pblock_out // receives a block of the board's memory
};

// A Source says how a result database is made.
enum class Source : uint8_t {
    none,
    shmem, // from shared memory, by its key
    text,  // from a text in the answer
    file   // from a file that the answer names, and that is then removed
};

// A Key says what names a result in shared memory.
enum class Key : uint8_t {
    none,
    argument, // the argument that states the command
    command,  // the operation's command
    request   // the command code that stands in the request after the exchange
};

struct Argument {
    std::string_view name;
    ArgumentType type;
    bool required;           // null gives BSP_ERR_PARAM, and nothing is sent
    bool optional;           // null is allowed and means "none"
    bool dropped;            // of a db: it is made, but not given to the caller
    const Field *field;      // its field of the request, or of the answer
    uint32_t size;           // of a block that always has the same number of bytes; otherwise 0
    uint32_t skip;           // the value of an answer is stored so many bytes behind the pointer
    int other;               // the index of the block that a length measures, or of the argument that is the key of a
                             // db; otherwise -1
    Source source;           // of a db
    Key key;                 // of a db from shared memory
    uint32_t bound;          // of a db from shared memory
    std::string_view logged; // of a db from a text or file: the format of the line that logs it, or empty
    std::span<const Field *const> picked; // of a record that is not sent: its fields that are copied to the request
    std::string_view brief;
};

// A Facet names a part of an operation that this catalogue cannot describe. A test of its own covers that part.
enum class Facet : uint8_t { request, status, null, answer };
struct Oddity {
    Facet facet;
    std::string_view brief;
};

// A Constant is a word that is the same in every request.
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
    ErrorPolicy error_policy;
    RequestForm request;
    AnswerForm answer;
    const Record *response;     // the record that describes the answer; null: there is none
    uint32_t response_size;     // bytes of the response buffer; the whole of a buffer of the library is cleared
    uint32_t preset;            // value of the response length word
    std::string_view logged_as; // its own name, or that of the operation that it goes through
    std::span<const Constant> constants;
    std::span<const Oddity> odd;
    std::span<const Argument> arguments;
};

// A Function makes no request.
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

// Each function returns null when it finds nothing. Channels and commands are found by name or by number.
const Record *find_record(std::string_view name);
const Channel *find_channel(std::string_view name);
const Channel *find_channel(uint32_t type);
const Command *find_command(std::string_view name);
// Of two commands that share a code, returns the one for `call`. Without a call, returns the first one.
const Command *find_command(uint32_t channel_type, uint32_t code, std::optional<Call> call = std::nullopt);
const Status *find_status(uint32_t value);
const Layout *find_layout(const Command &command, bool of_answer = false);
// Returns the layout of what the configuration keeps of a command's setting.
const Layout *find_kept_layout(const Command &command);
const View *find_view(const Command &command);
const Operation *find_operation(std::string_view name);
const Function *find_function(std::string_view name);
const Field *find_field(std::span<const Field> fields, std::string_view name);
const Oddity *find_oddity(const Operation &operation, Facet facet);

std::string_view to_text(Class impact);
std::string_view to_text(Call call);
// Each function returns what has this name. Returns nothing when nothing has it.
std::optional<Class> find_class(std::string_view name);
std::optional<Call> find_call(std::string_view name);
std::string_view to_text(FieldType type);

} // namespace catalogue

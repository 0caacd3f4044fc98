// ponctl i2c uses the bus to the optical modules.
#include <algorithm>

#include "call/invocation.h"
#include "cli/program.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

struct I2cOptions {
    std::string port, address, offset;
    std::string length; // number of bytes to read
    std::string bytes;  // bytes to write
};

// Returns the address on the bus, which is the same for reading and writing.
std::vector<std::string> place_of(const I2cOptions &options, size_t length)
{
    return words_of({{"port", number_word("PORT", options.port)},
                     {"buf.address", number_word("ADDRESS", options.address)},
                     {"buf.offset", number_word("OFFSET", options.offset)},
                     {"buf.length", std::to_string(length)}});
}

// Prints sixteen bytes in each line, below the columns of the heading.
void dump(const Output &output, size_t start, std::span<const uint8_t> bytes)
{
    constexpr size_t line = 16;
    if (output.headings) std::fprintf(output.stream, "     0  1  2  3  4  5  6  7  8  9  a  b  c  d  e  f\n");
    for (size_t from = start - start % line; from < start + bytes.size(); from += line) {
        std::string hex, characters;
        for (size_t at = from; at < from + line; ++at) {
            const bool known = at >= start && at < start + bytes.size();
            const uint8_t byte = known ? bytes[at - start] : 0;
            hex += known ? " " + text::to_hex({&byte, 1}) : "   ";
            characters.push_back(!known ? ' ' : byte >= ' ' && byte < 0x7f ? static_cast<char>(byte) : '.');
        }
        std::fprintf(output.stream, "%02zx:%s  %s\n", from, hex.c_str(), characters.c_str());
    }
}

// Returns the bytes that words of a command line give: 5a 01, or 5a01.
Bytes bytes_of(const std::string &text)
{
    const std::string digits = text.starts_with("0x") ? text.substr(2) : text;
    if (digits.empty() || digits.size() % 2 != 0 || digits.find_first_not_of("0123456789abcdefABCDEF") != digits.npos)
        throw UsageError("BYTES: '" + text + "' is not pairs of hexadecimal digits, as 40 or 4001ff");
    return parse_block("BYTES", "hex:" + digits);
}

ExitCode run_i2c_read(const Output &output, const I2cOptions &options)
{
    const Invocation called("bsp_debug_8022_i2c_read", place_of(options, parse_number("LENGTH", options.length)),
                            consent());
    if (!called.good()) return report(called);
    const Reading answer = called.block();
    const catalogue::Field *data = find_field(answer, "data");
    std::span<const uint8_t> bytes = field_bytes(*data, answer.bytes);
    const auto read = static_cast<size_t>(field_number(answer, "result").value_or(0));
    bytes = bytes.first(std::min(read, bytes.size()));
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        for (const char *name : {"address", "offset"}) {
            json.key(name);
            json.field(*find_field(answer, name), answer);
        }
        json.member("bytes", text::to_hex(bytes));
        json->EndObject();
    } else if (output.format == Format::hex) {
        print_bytes(output, answer.bytes, &answer);
    } else {
        dump(output, static_cast<size_t>(field_number(answer, "offset").value_or(0)), bytes);
    }
    return exit_success;
}

ExitCode run_i2c_write(const Output &, const I2cOptions &options)
{
    const Bytes bytes = bytes_of(options.bytes);
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command("BSP_CMD_DEBUG_I2C_WRITE"));
    const catalogue::Field &data = *catalogue::find_field(layout.fields, "data");
    if (bytes.size() > data.size)
        throw UsageError("BYTES: " + std::to_string(bytes.size()) + " bytes are more than the " +
                         std::to_string(data.size) + " that go at once");
    std::vector<std::string> words = place_of(options, bytes.size());
    words.push_back("buf.data=hex:" + text::to_hex(bytes));
    ask_before("bsp_debug_8022_i2c_write",
               "writing " + std::to_string(bytes.size()) + " bytes to the module in cage " + options.port);
    return report(Invocation("bsp_debug_8022_i2c_write", words, consent()));
}

void add_place(Command &one, I2cOptions &options)
{
    one.argument("PORT", &options.port, "SFP cage; that of a PON port has its number").is_required();
    one.argument("ADDRESS", &options.address, "bus address, as 0xa0").is_required();
    one.argument("OFFSET", &options.offset, "first byte of the memory").is_required();
}

} // namespace

void add_i2c(Program &program)
{
    Command &i2c = program.tree.add("i2c", "Reads and writes the memory of the optical modules");

    Command &read = i2c.add("read", "Reads bytes, and shows them by their places in the memory");
    I2cOptions &from = read.runs(run_i2c_read);
    add_place(read, from);
    read.argument("LENGTH", &from.length, "how many bytes").is_required();

    Command &write = i2c.add("write", "Writes bytes");
    I2cOptions &to = write.runs(run_i2c_write);
    add_place(write, to);
    write.argument("BYTES", &to.bytes, "the bytes, in pairs of hexadecimal digits, as 40 or 4001ff").is_required();
}

} // namespace ponctl

// ponctl config saves the OLT's configuration in a file and loads it from one.
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include "call/invocation.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/text.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace ponctl
{
namespace
{

std::string action(const char *command)
{
    return "action=" + std::to_string(catalogue::find_command(command)->code);
}

bool write_all(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0) return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return fsync(file) == 0;
}

// Writes the whole text. When that fails, the file keeps its old contents. Only its owner may read the file, because it
// has passwords.
ExitCode replace_file(const std::string &name, std::string_view text)
{
    std::string other = name + ".XXXXXX";
    const int file = mkstemp(other.data());
    bool good = file >= 0 && write_all(file, text);
    int error = errno;
    if (file >= 0) close(file);
    if (good && std::rename(other.c_str(), name.c_str()) != 0) {
        good = false;
        error = errno;
    }
    if (good) return exit_success;
    if (file >= 0) unlink(other.c_str());
    complain(name + ": cannot be written: " + std::strerror(error));
    return exit_output;
}

void append(Bytes &bytes, uint32_t word)
{
    const auto *start = reinterpret_cast<const uint8_t *>(&word);
    bytes.insert(bytes.end(), start, start + sizeof word);
}

ExitCode run_config_save(const Output &output, const std::string &file)
{
    if (file.empty()) throw UsageError("FILE: empty");
    const Invocation called("bsp_profile_exec_get_cfgwr", {action("BSP_CMD_CONFIG_READ")}, consent());
    if (!called.good() || mode().dry_run) return report(called);
    constexpr size_t data_out = 1;
    const std::string_view text = called.text(data_out);
    if (file != "-") return replace_file(file, text);
    if (output.format == Format::table)
        std::fwrite(text.data(), 1, text.size(), output.stream);
    else
        print_content(output, {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
    return exit_success;
}

ExitCode run_config_load(const Output &, const std::string &file)
{
    constexpr size_t longest_part = 4048;
    const Bytes text = parse_block("FILE", "@" + file);
    if (text.empty()) throw UsageError("FILE: " + file + " is empty");
    ask_before("BSP_CMD_CONFIG_LOAD", "loading " + file + ", which replaces all that the OLT keeps,");
    const text::Sha256 digest = text::sha256({reinterpret_cast<const char *>(text.data()), text.size()});
    for (size_t offset = 0; offset < text.size(); offset += longest_part) {
        const size_t length = std::min(longest_part, text.size() - offset);
        Bytes part;
        append(part, static_cast<uint32_t>(offset));
        append(part, static_cast<uint32_t>(text.size()));
        append(part, static_cast<uint32_t>(length));
        part.insert(part.end(), digest.begin(), digest.end());
        const auto start = text.begin() + static_cast<ptrdiff_t>(offset);
        part.insert(part.end(), start, start + static_cast<ptrdiff_t>(length));
        const Invocation sent("bsp_profile_exec_set",
                              {action("BSP_CMD_CONFIG_LOAD_PART"), "buf=hex:" + text::to_hex(part)}, consent());
        if (!sent.good()) return report(sent, file + ": ");
    }
    return report(Invocation("bsp_profile_exec_set", {action("BSP_CMD_CONFIG_LOAD"), "buf=hex:" + text::to_hex(digest)},
                             consent()),
                  file + ": ");
}

} // namespace

void add_config(Program &program)
{
    Command &config = program.tree.add("config", "Saves the configuration of the OLT, and loads it again");

    Command &save = config.add("save", "Saves all that the OLT keeps in a file");
    std::string &file = save.runs(run_config_save);
    save.argument("FILE", &file, "the file, which is replaced; - for standard output").is_required();

    Command &load = config.add("load", "Has the OLT become the one that was saved");
    std::string &loaded = load.runs(run_config_load);
    load.argument("FILE", &loaded,
                  "what was saved, of an OLT with the same seed, ports, arrivals and silent "
                  "share")
        .is_required();
}

} // namespace ponctl

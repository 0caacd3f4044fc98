// Lines of ponctl's shell and batch. Each is split, completed and carried out in a dry run: it is checked, and what it
// would send is shown. No service is there, nothing is sent, and no file is opened.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/program.h"
#include "shell/complete.h"
#include "shell/tokens.h"
#include "target.h"

namespace
{

using namespace ponctl;

// While it lives, the working folder is one that was removed. Nothing is there, and nothing can be made there.
class Nowhere
{
public:
    Nowhere()
    {
        static const int removed = make_removed_folder();
        fuzz::require(before >= 0 && fchdir(removed) == 0, "the working folder can be another one");
    }
    ~Nowhere()
    {
        fuzz::require(fchdir(before) == 0, "the working folder can be left");
        close(before);
    }
    Nowhere(const Nowhere &) = delete;
    Nowhere &operator=(const Nowhere &) = delete;

private:
    static int make_removed_folder()
    {
        char name[] = "/tmp/fuzz-XXXXXX";
        const int folder = mkdtemp(name) ? open_folder(name) : -1;
        fuzz::require(folder >= 0 && rmdir(name) == 0, "a folder can be made and removed");
        return folder;
    }
    static int open_folder(const char *name) { return open(name, O_PATH | O_DIRECTORY | O_CLOEXEC); }

    int before = open_folder(".");
};

// Returns whether a word can name a file of another folder than the working one. A slash behind a digit is that of a
// port and its ONUs.
bool names_other_folder(std::string_view line)
{
    for (size_t at = line.find('/'); at != line.npos; at = line.find('/', at + 1))
        if (at == 0 || line[at - 1] < '0' || line[at - 1] > '9') return true;
    return false;
}

// Written takes what is written to a standard stream while it lives.
class Written
{
public:
    explicit Written(std::FILE *&standard) : stream(standard), before(standard)
    {
        stream = open_memstream(&bytes, &size);
        fuzz::require(stream, "there is memory for a stream");
    }
    ~Written()
    {
        std::fclose(stream);
        stream = before;
        std::free(bytes);
    }
    Written(const Written &) = delete;
    Written &operator=(const Written &) = delete;

    std::string_view text()
    {
        std::fflush(stream);
        return {bytes, size};
    }

private:
    std::FILE *&stream;
    std::FILE *before;
    char *bytes = nullptr;
    size_t size = 0;
};

bool is_control(char byte)
{
    return (static_cast<unsigned char>(byte) < ' ' && byte != '\n') || byte == 0x7f;
}

void run(const std::vector<std::string> &words)
{
    GlobalOptions defaults;
    defaults.dry_run = true;
    defaults.colour = "never";
    defaults.nested = true;
    Written output(stdout), errors(stderr);
    const int code = run_line(words, defaults);
    fuzz::require(code >= exit_success && code <= exit_output, "a line ends with a code of the tool");
    const bool coloured =
        std::ranges::any_of(words, [](const std::string &word) { return word.find("col") != word.npos; });
    fuzz::require(coloured || std::ranges::none_of(output.text(), is_control), "no result is a command to a terminal");
    fuzz::require(coloured || std::ranges::none_of(errors.text(), is_control), "no error is a command to a terminal");
    fuzz::require(code == exit_success || !errors.text().empty(), "what fails says why");
}

void complete(std::string_view line)
{
    const Ask nobody = [](const std::vector<std::string> &) { return std::string(); };
    press_tab(line, nobody);
    help_at(line, nobody);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t most = 8; // lines
    std::string_view text(reinterpret_cast<const char *>(data), size);
    const Nowhere nowhere;
    for (size_t count = 0; count < most && !text.empty(); ++count) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (names_other_folder(line)) continue;
        complete(line);
        try {
            run(split_line(line));
        } catch (const UsageError &) {
            continue;
        }
    }
    return 0;
}

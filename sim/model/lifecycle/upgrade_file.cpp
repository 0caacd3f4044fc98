#include "model/lifecycle/upgrade_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <vector>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "text/number.h"

namespace ponsim
{
namespace
{

constexpr size_t max_file_size = 64 * 1024;

// Reads a line that has words. Returns what is wrong with it, or an empty text.
std::string add_line(const std::vector<std::string> &words, UpgradeTypes &types)
{
    constexpr size_t per_line = 5;
    if (words.size() != per_line) return "expected name, vendor, model, version and size";
    const auto size = text::to_number<uint32_t>(words[4]).value_or(0);
    if (size == 0) return words[4] + ": expected a size in bytes";
    const UpgradeType type{words[1], words[2], words[3], size, {}};
    if (!is_good(words[0], type))
        return "name (31 characters), vendor (4), model (15) or version (16) is too long, or has characters that are "
               "not ASCII, a quote or a backslash";
    if (!types.emplace(words[0], type).second) return words[0] + " is there twice";
    return types.size() > max_upgrade_types ? "more than 32 types" : std::string();
}

UpgradeFile parse(const std::string &file, const std::string &text)
{
    UpgradeFile result{BSP_OK};
    std::istringstream lines(text);
    std::string line;
    for (size_t number = 1; std::getline(lines, line); ++number) {
        std::istringstream in(line.substr(0, line.find('#')));
        const std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
        if (words.empty()) continue;
        const std::string problem = add_line(words, result.types);
        if (!problem.empty()) return {PON_ERR_BAD_RECORD, {}, file + ':' + std::to_string(number) + ": " + problem};
    }
    return result;
}

class Descriptor
{
public:
    explicit Descriptor(long opened) : descriptor(static_cast<int>(opened)) {}
    ~Descriptor()
    {
        if (descriptor >= 0) close(descriptor);
    }
    Descriptor(const Descriptor &) = delete;
    int get() const { return descriptor; }

private:
    int descriptor;
};

// Reads the file `name` below the folder. Returns why it must not or cannot be read, or an empty text. The file is
// opened once, so that what was checked is what is read, and nothing that it could be makes the service wait.
std::string read_below(const std::string &folder, const std::string &name, std::string &text)
{
    const Descriptor opened_folder(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (opened_folder.get() < 0) return "the folder of upgrade files cannot be used: " + std::string(strerror(errno));
    open_how how{};
    how.flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_XDEV;
    const Descriptor file(syscall(SYS_openat2, opened_folder.get(), name.c_str(), &how, sizeof how));
    struct stat found, found_folder;
    if (file.get() < 0 || fstat(file.get(), &found) || fstat(opened_folder.get(), &found_folder))
        return strerror(errno);
    if (!S_ISREG(found.st_mode)) return "not a regular file";
    if (found.st_uid != geteuid() && found.st_uid != 0 && found.st_uid != found_folder.st_uid)
        return "it is neither of the user of the service, nor of root, nor of the folder's owner";
    text.resize(max_file_size + 1);
    size_t length = 0;
    while (length < text.size()) {
        const ssize_t got = read(file.get(), text.data() + length, text.size() - length);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return strerror(errno);
        if (got == 0) break;
        length += static_cast<size_t>(got);
    }
    text.resize(length);
    return {};
}

} // namespace

UpgradeFile read_upgrade_file(const std::string &folder, const std::string &file)
{
    const std::filesystem::path path = std::filesystem::path(file).lexically_normal();
    if (!path.is_absolute()) return {PON_ERR_BAD_RECORD, {}, "upgrade types: \"" + file + "\" is not an absolute path"};
    const std::filesystem::path name = path.lexically_relative(folder);
    if (folder.empty() || name.empty() || *name.begin() == "..")
        return {PON_ERR_NO_FILE, {}, file + ": not in the folder of upgrade files, " + folder};
    std::string text;
    if (const std::string problem = read_below(folder, name, text); !problem.empty())
        return {PON_ERR_NO_FILE, {}, file + ": " + problem};
    if (text.size() > max_file_size) return {PON_ERR_BAD_RECORD, {}, file + ": longer than 64 KiB"};
    return parse(file, text);
}

} // namespace ponsim

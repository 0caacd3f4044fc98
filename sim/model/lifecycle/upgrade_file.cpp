#include "model/lifecycle/upgrade_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

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

} // namespace

UpgradeFile read_upgrade_file(const std::string &file)
{
    if (!std::filesystem::path(file).is_absolute())
        return {PON_ERR_BAD_RECORD, {}, "upgrade types: \"" + file + "\" is not an absolute path"};
    // Anything but a regular file could make a reader wait.
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return {PON_ERR_NO_FILE, {}, file + ": not a regular file"};
    std::ifstream in(file, std::ios::binary);
    std::string text(max_file_size + 1, '\0');
    if (!in.read(text.data(), static_cast<std::streamsize>(text.size())) && !in.eof())
        return {PON_ERR_NO_FILE, {}, file + ": cannot be read"};
    text.resize(static_cast<size_t>(in.gcount()));
    if (text.size() > max_file_size) return {PON_ERR_BAD_RECORD, {}, file + ": longer than 64 KiB"};
    return parse(file, text);
}

} // namespace ponsim

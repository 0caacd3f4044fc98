// This program runs a fuzz target without a fuzzer: first on the files of its corpus, then on inputs that it changes
// from them. The seed is fixed, so each run does the same.
//
//   replay COUNT FOLDER...
//
// COUNT is the number of changed inputs. Each input is written to the file `wrong-TARGET` before it is run. So the file
// stays behind when the program dies of an input, whatever it dies of.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "target.h"

// A target without a mutator has a null here.
#pragma weak LLVMFuzzerCustomMutator

namespace
{

using Bytes = std::vector<uint8_t>;
using Paths = std::vector<std::filesystem::path>;

constexpr size_t longest = 4096; // bytes of a changed input, unless it is made of a longer one
std::minstd_rand chance;

size_t below(size_t bound)
{
    return chance() % bound;
}

// The File keeps the input that runs.
class File
{
public:
    explicit File(std::string at) : path(std::move(at)), opened(creat(path.c_str(), S_IRUSR | S_IWUSR)) {}
    ~File()
    {
        close(opened);
        unlink(path.c_str());
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    void keep(const Bytes &input) const
    {
        const auto size = static_cast<ssize_t>(input.size());
        fuzz::require(pwrite(opened, input.data(), input.size(), 0) == size && ftruncate(opened, size) == 0,
                      "the input can be written to a file");
    }

private:
    std::string path;
    int opened;
};

void run(const Bytes &input, const File &file)
{
    file.keep(input);
    // The copy has no room behind its end, so that AddressSanitizer notices what is read there.
    const Bytes exact(input);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

Bytes content_of(const std::filesystem::path &path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Returns the files in order, because a folder has none.
Paths files_of(const Paths &folders)
{
    Paths files;
    for (const std::filesystem::path &folder : folders)
        for (const auto &entry : std::filesystem::directory_iterator(folder))
            if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

Bytes changed(Bytes input)
{
    const size_t size = input.size(), room = std::max(longest, size);
    input.resize(room);
    const auto change = LLVMFuzzerCustomMutator ? LLVMFuzzerCustomMutator(input.data(), size, room, chance())
                                                : LLVMFuzzerMutate(input.data(), size, room);
    input.resize(change);
    return input;
}

int replay(const char *program, size_t count, const Paths &folders)
{
    const File file("wrong-" + std::filesystem::path(program).filename().string());
    std::vector<Bytes> inputs;
    for (const std::filesystem::path &path : files_of(folders))
        run(inputs.emplace_back(content_of(path)), file);
    fuzz::require(!inputs.empty(), "the corpus has files");
    for (size_t number = 0; number < count; ++number)
        run(changed(inputs[below(inputs.size())]), file);
    std::fprintf(stderr, "ran %zu files and %zu changed inputs\n", inputs.size(), count);
    return 0;
}

} // namespace

// Changes up to four parts of the input: inserts a byte, takes bytes away, turns a bit over, or repeats bytes
// elsewhere.
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t room)
{
    constexpr size_t most_changes = 4, longest_part = 16;
    Bytes bytes(data, data + size);
    for (size_t changes = 1 + below(most_changes); changes > 0; --changes) {
        const size_t at = below(bytes.size() + 1), length = std::min(1 + below(longest_part), bytes.size() - at);
        const auto part = bytes.begin() + static_cast<ptrdiff_t>(at), end = part + static_cast<ptrdiff_t>(length);
        switch (below(4)) {
        case 0:
            bytes.insert(part, static_cast<uint8_t>(chance()));
            break;
        case 1:
            bytes.erase(part, end);
            break;
        case 2:
            if (part != end) *part ^= static_cast<uint8_t>(1u << below(8));
            break;
        default: {
            const Bytes again(part, end);
            bytes.insert(bytes.begin() + static_cast<ptrdiff_t>(below(bytes.size() + 1)), again.begin(), again.end());
        }
        }
    }
    const size_t changed_size = std::min(bytes.size(), room);
    std::copy_n(bytes.begin(), changed_size, data);
    return changed_size;
}

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    size_t count = 0;
    if (words.size() < 2 || std::from_chars(words[0].data(), words[0].data() + words[0].size(), count).ptr !=
                                words[0].data() + words[0].size()) {
        std::fprintf(stderr, "usage: %s COUNT FOLDER...\n", argv[0]);
        return 2;
    }
    return replay(argv[0], count, Paths(words.begin() + 1, words.end()));
}

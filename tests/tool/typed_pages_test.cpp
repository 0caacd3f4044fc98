// These tests do what pages say, from top to bottom, on a fresh simulator: the tour of the commands, and a day's work.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>

#include "process.h"
#include "shell.h"
#include "simulator.h"

namespace
{

namespace fs = std::filesystem;

struct Line {
    std::string command;
    bool ends_with_1 = false; // the page says so
};

// Returns the command lines of a page: what stands as code in the first column of its tables.
std::vector<Line> lines_of(const std::string &page)
{
    std::ifstream text(SOURCES "/" + page);
    std::vector<Line> lines;
    for (std::string line; std::getline(text, line);) {
        if (!line.starts_with("| `")) continue;
        const size_t end = line.find("` | ");
        lines.push_back({line.substr(3, end - 3), line.find("ends with 1", end) != line.npos});
    }
    return lines;
}

bool needs_terminal(const std::string &line)
{
    return line.find("--chart") != line.npos || line == "ponctl shell";
}

// What is read again and again ends with an interrupt.
bool goes_on(const std::string &line)
{
    return line.find("--follow") != line.npos || line.find("--chart") != line.npos;
}

class Page : public testing::TestWithParam<const char *>
{
};

TEST_P(Page, SaysWhatCanBeDoneOnAFreshSimulator)
{
    const std::vector<Line> lines = lines_of(GetParam());
    ASSERT_GT(lines.size(), 20u);
    ASSERT_EQ(lines.front().command, "ponsim &");
    const Simulator simulator{{"--speed", "20"}}; // so that nobody waits for ONUs and upgrades
    const fs::path folder = Simulator::folder() + "/typed";
    fs::create_directory(folder);
    fs::create_symlink(SOURCES "/scenarios", folder / "scenarios");
    const std::string environment = "cd '" + folder.string() + "'; export HOME=\"$PWD\" PATH='" +
                                    fs::path(PONCTL).parent_path().string() + ":" +
                                    fs::path(PONSIM).parent_path().string() + "':\"$PATH\"; ";
    for (size_t index = 1; index < lines.size(); ++index) {
        const auto &[line, ends_with_1] = lines[index];
        SCOPED_TRACE(line);
        std::string run = line;
        if (goes_on(line)) run = "timeout --foreground --preserve-status -s INT 2 " + line;
        if (line.ends_with(" &")) // it serves in the background until it is ended
            run = line.substr(0, line.size() - 2) +
                  " >out & pid=$!; for i in $(seq 200); do grep -q serving out && break; sleep 0.05; done; "
                  "grep -q serving out; code=$?; kill $pid; wait $pid; exit $code";
        std::ofstream(folder / "line") << environment << run << "\n";
        const std::string bash = "bash '" + (folder / "line").string() + "'";
        const std::string whole =
            (needs_terminal(line) ? "echo exit | TERM=dumb timeout -k 1 60 script -qefc \"" + bash + "\" /dev/null"
                                  : "timeout -k 1 60 " + bash + " </dev/null") +
            "; echo \"exit $?\"";
        // An ONU that was just bound needs some seconds to register.
        std::string said;
        const auto is_good = [&] {
            return said.ends_with(ends_with_1 ? "exit 1\n" : "exit 0\n") ||
                   (goes_on(line) && said.ends_with("exit 130\n"));
        };
        for (int tries = 0; tries < 20 && !is_good(); ++tries) {
            if (tries > 0) std::this_thread::sleep_for(std::chrono::milliseconds(500));
            said = output_of(whole);
        }
        EXPECT_TRUE(is_good()) << said;
    }
    fs::remove_all(folder);
}

INSTANTIATE_TEST_SUITE_P(Of, Page, testing::Values("docs/tour.md", "docs/daily-work.md"));

} // namespace

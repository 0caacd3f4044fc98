// The simulators of these tests are started by a test. The tests check which one is reached, what is reported when none
// starts, and what is left of it.
#include <sys/syscall.h>
#include <sys/wait.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "../system/view.h"
#include "board/service.h"
#include "bsp_pon.h"
#include "bsp_testing/simulator.h"

namespace
{

namespace fs = std::filesystem;

constexpr char two_olts[] = "[[olt]]\nname = \"north\"\nports = 1\n[[olt]]\nname = \"south\"\nports = 2\n";

// A Start starts a simulator in this process, or as a child of this process.
using Start = std::function<bsp_simulator *(const bsp_simulator_options &, char *, size_t)>;
const Start in_process = [](const bsp_simulator_options &options, char *error, size_t size) {
    return bsp_simulator_start(&options, error, size);
};
const Start as_child = [](const bsp_simulator_options &options, char *error, size_t size) {
    return bsp_simulator_spawn(&options, PONSIM, error, size);
};

class Simulator
{
public:
    explicit Simulator(const Start &start, const bsp_simulator_options &options = {})
        : handle(start(options, error, sizeof error))
    {
        EXPECT_TRUE(handle) << error;
    }
    // Tests recognise an OLT by how many ONUs have arrived at each of its ports.
    Simulator(const Start &start, uint32_t arrivals) : Simulator(start, {.arrivals = arrivals}) {}
    ~Simulator() { stop(); }
    Simulator(const Simulator &) = delete;

    operator bsp_simulator *() const { return handle; }
    const char *directory(const char *olt = nullptr) const { return bsp_simulator_directory(handle, olt); }
    void stop() { bsp_simulator_stop(std::exchange(handle, nullptr)); }

private:
    char error[500] = "";
    bsp_simulator *handle;
};

std::string said(bsp_simulator *simulator, const char *line, const char *olt = nullptr)
{
    char text[2000] = "";
    const int result = bsp_simulator_control(simulator, olt, line, text, sizeof text);
    return (result == 0 ? "" : "refused: ") + std::string(text);
}

std::string reason(const Start &start, const bsp_simulator_options &options)
{
    char error[2000] = "";
    bsp_simulator *const simulator = start(options, error, sizeof error);
    EXPECT_EQ(simulator, nullptr);
    bsp_simulator_stop(simulator);
    return error;
}

// Returns the number of ONUs at port 1 of the OLT that is reached, or 0xffffffff when none is reached.
uint32_t arrivals()
{
    bsp_pon_msg record{};
    record.pon_port = 1;
    const View onus([&record](db_handle **db) { return bsp_pon_get_onu_info_web(db, &record); });
    return onus.status() == BSP_OK ? onus.count() : 0xffffffff;
}
constexpr uint32_t nobody = 0xffffffff;

size_t entries(const fs::path &folder)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), {}));
}

std::vector<pid_t> children()
{
    std::vector<pid_t> all;
    for (const auto &task : fs::directory_iterator("/proc/self/task")) {
        std::ifstream in(task.path() / "children");
        for (pid_t pid; in >> pid;)
            all.push_back(pid);
    }
    return all;
}

struct Folder {
    std::string path = (fs::temp_directory_path() / "embed-test.XXXXXX").string();

    Folder() { EXPECT_TRUE(mkdtemp(path.data())); }
    ~Folder() { fs::remove_all(path); }
};

class Embedded : public testing::TestWithParam<const Start *>
{
protected:
    const Start &start = *GetParam();
};

TEST_P(Embedded, simulators_one_after_the_other_are_each_reached)
{
    for (uint32_t number = 1; number <= 3; ++number) {
        Simulator simulator(start, number);
        EXPECT_EQ(arrivals(), number);
        simulator.stop();
        EXPECT_EQ(arrivals(), nobody);
    }
}

TEST_P(Embedded, of_two_the_one_whose_folder_is_used_is_reached)
{
    const Simulator first(start, 1), second(start, 2);
    EXPECT_EQ(arrivals(), 2u);
    for (int round = 0; round < 3; ++round) {
        board_ipc_use_directory(first.directory());
        EXPECT_EQ(arrivals(), 1u);
        board_ipc_use_directory(second.directory());
        EXPECT_EQ(arrivals(), 2u);
    }
}

TEST_P(Embedded, each_thread_reaches_the_one_whose_folder_it_uses)
{
    const Simulator first(start, 1), second(start, 2);
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (uint32_t number = 0; number < 4; ++number)
        threads.emplace_back([&, number] {
            for (uint32_t round = 0; round < 20; ++round) {
                const bool to_first = (number + round / 5) % 2 == 0;
                board_ipc_use_thread_directory(to_first ? first.directory() : second.directory());
                wrong += arrivals() != (to_first ? 1 : 2);
                wrong += bsp_simulator_step(to_first ? second : first, nullptr, 1) != 0;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(bsp_simulator_now(first, nullptr), 40);
    EXPECT_EQ(bsp_simulator_now(second, nullptr), 40);
    EXPECT_STREQ(board_ipc_directory(), second.directory()) << "the threads' folders are not this one's";
}

TEST_P(Embedded, all_threads_follow_when_the_folder_changes)
{
    const Simulator first(start, 1), second(start, 2);
    std::atomic<uint32_t> asked{0}, answered{0};
    const auto wait_for = [](const std::atomic<uint32_t> &value, uint32_t wanted) {
        for (uint32_t now; (now = value) != wanted;)
            value.wait(now);
    };
    std::vector<uint32_t> seen;
    std::thread other([&] {
        for (uint32_t round = 1; round <= 4; ++round) {
            wait_for(asked, round);
            seen.push_back(arrivals());
            answered = round;
            answered.notify_all();
        }
    });
    for (uint32_t round = 1; round <= 4; ++round) {
        board_ipc_use_directory(round % 2 ? first.directory() : second.directory());
        asked = round;
        asked.notify_all();
        wait_for(answered, round);
    }
    other.join();
    EXPECT_EQ(seen, (std::vector<uint32_t>{1, 2, 1, 2}));
}

TEST_P(Embedded, a_scenarios_olts_are_told_apart_by_their_names)
{
    const Simulator simulator(start, {.scenario = two_olts});
    EXPECT_STREQ(board_ipc_directory(), simulator.directory("north"));
    EXPECT_STRNE(simulator.directory("north"), simulator.directory("south"));
    EXPECT_EQ(simulator.directory("east"), nullptr);
    EXPECT_EQ(simulator.directory(), nullptr);
    EXPECT_EQ(said(simulator, "step 5", "south"), "5 s of model time\n");
    EXPECT_EQ(bsp_simulator_step(simulator, nullptr, 250), 0);
    EXPECT_EQ(bsp_simulator_now(simulator, "north"), 250);
    EXPECT_EQ(bsp_simulator_now(simulator, "south"), 5250);
    EXPECT_EQ(said(simulator, "now"), "refused: there are several OLTs; name one");
    EXPECT_EQ(said(simulator, "now", "east"), "refused: east: there is no OLT of this name");
}

TEST_P(Embedded, time_stands_still_but_for_steps_unless_a_speed_is_given)
{
    const Simulator still(start, 1), fast(start, {.speed = 1e6});
    while (bsp_simulator_now(fast, nullptr) == 0) {
    }
    EXPECT_EQ(bsp_simulator_now(still, nullptr), 0);
}

TEST_P(Embedded, a_wrong_control_line_is_explained)
{
    const Simulator simulator(start, 1);
    EXPECT_EQ(said(simulator, "jump"), "refused: jump: not a command; ponsim ctl help lists the commands");
    EXPECT_EQ(said(simulator, std::string(100000, 'x').c_str()), "refused: the command is too long");
    char cut[4] = "";
    EXPECT_EQ(bsp_simulator_control(simulator, nullptr, "jump", cut, sizeof cut), -1);
    EXPECT_STREQ(cut, "jum");
    EXPECT_EQ(bsp_simulator_control(simulator, nullptr, "now", nullptr, 0), 0);
}

TEST_P(Embedded, onus_come_and_go)
{
    const Simulator simulator(start, 1);
    const uint32_t before = arrivals();
    EXPECT_EQ(said(simulator, "arrive 1 count=2 name=late"), "");
    EXPECT_EQ(bsp_simulator_step(simulator, nullptr, 60000), 0);
    EXPECT_EQ(arrivals(), before + 2);
    EXPECT_EQ(said(simulator, "leave 1 late-*"), "");
    EXPECT_EQ(bsp_simulator_step(simulator, nullptr, 60000), 0);
    EXPECT_EQ(arrivals(), before);
    EXPECT_EQ(said(simulator, "show"), "nothing differs from a healthy plant\n");
}

TEST_P(Embedded, no_arrivals_can_be_asked_for)
{
    const Simulator simulator(start, BSP_SIMULATOR_NONE);
    EXPECT_EQ(arrivals(), 0u);
}

TEST_P(Embedded, options_that_make_no_sense_are_explained)
{
    EXPECT_EQ(reason(start, {.scenario = "[[olt]]\nports = 2\nprots = 2\n"}).substr(0, 12), "scenario:3: ");
    EXPECT_EQ(reason(start, {.scenario_file = "/nowhere.toml"}),
              "/nowhere.toml: cannot be read: No such file or directory");
    EXPECT_EQ(reason(start, {.scenario_file = "/nowhere.toml", .scenario = two_olts}),
              "scenario and scenario_file are both set; leave one null");
    EXPECT_EQ(reason(start, {.scenario = two_olts, .ports = 1}),
              "seed, ports, arrivals and silent are the scenario's; leave them 0");
    EXPECT_EQ(reason(start, {.ports = 17}), "ports: expected at most 16, not 17");
    EXPECT_EQ(reason(start, {.speed = -1}), "speed: expected 0 to 1000000");
}

TEST_P(Embedded, a_folder_that_cannot_be_made_is_named)
{
    EXPECT_EQ(reason(start, {.socket_dir = "/nowhere/at/all"}),
              "cannot make the sockets' folder /nowhere/at/all: No such file or directory");
}

TEST_P(Embedded, calls_that_are_under_way_when_it_stops_fail)
{
    Simulator simulator(start, 1);
    std::atomic<int> served{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&] {
            for (bool first = true; arrivals() == 1; first = false)
                if (first) {
                    ++served;
                    served.notify_all();
                }
        });
    for (int now; (now = served) != 4;)
        served.wait(now);
    simulator.stop();
    for (std::thread &thread : threads)
        thread.join();
}

TEST_P(Embedded, nothing_is_left_of_it)
{
    Simulator(start, 1).stop(); // makes everything that is made only once
    const auto count = [] { return std::pair(entries("/proc/self/fd"), entries("/proc/self/task")); };
    const auto before = count();
    std::string folder;
    {
        const Simulator simulator(start, 1);
        EXPECT_EQ(arrivals(), 1u);
        EXPECT_EQ(said(simulator, "step 1"), "1 s of model time\n");
        folder = simulator.directory();
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    }
    EXPECT_EQ(count(), before);
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_TRUE(children().empty());
}

TEST_P(Embedded, a_folder_that_was_given_stays_and_a_state_is_gone_on_with)
{
    const Folder folder;
    const std::string state = folder.path + "/olt.db", sockets = folder.path + "/ipc";
    const bsp_simulator_options options{.state = state.c_str(), .socket_dir = sockets.c_str()};
    EXPECT_EQ(said(Simulator(start, options), "step 100"), "100 s of model time\n");
    EXPECT_EQ(said(Simulator(start, options), "now"), "100 s of model time\n");
    EXPECT_TRUE(fs::is_directory(sockets));

    bsp_simulator_options other = options;
    other.seed = 2;
    EXPECT_NE(reason(start, other).find("the stored state is that of an OLT with --seed 1 "), std::string::npos);
}

TEST_P(Embedded, what_is_exchanged_is_recorded_in_a_file)
{
    const Folder folder;
    const std::string file = folder.path + "/recording";
    const bsp_simulator_options options{.record = file.c_str()};
    const Simulator simulator(start, options);
    const auto before = fs::file_size(file);
    EXPECT_EQ(bsp_pon_no_bind_onu_all(1), BSP_OK);
    EXPECT_GT(fs::file_size(file), before);
}

TEST_P(Embedded, a_forked_process_reaches_it_and_cannot_stop_it)
{
    const Simulator simulator(start, 3);
    EXPECT_EQ(arrivals(), 3u);
    const pid_t child = fork();
    if (child == 0) {
        const bool reached = arrivals() == 3 && said(simulator, "now") == "0 s of model time\n";
        bsp_simulator_stop(simulator);
        _exit(reached ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(arrivals(), 3u);
}

// A Victim is a process that has a simulator in a temporary folder, until it is killed.
class Victim
{
public:
    explicit Victim(const Start &start)
    {
        int ends[2];
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        process = fork();
        if (process == 0) {
            start({.scenario = two_olts}, nullptr, 0);
            const std::string directory = fs::path(board_ipc_directory()).parent_path().string();
            const std::vector<pid_t> started = children();
            const pid_t served_by = started.empty() ? 0 : started[0];
            if (write(ends[1], &served_by, sizeof served_by) < 0) _exit(1);
            if (write(ends[1], directory.data(), directory.size()) < 0) _exit(1);
            close(ends[1]);
            for (;;)
                pause();
        }
        close(ends[1]);
        EXPECT_EQ(read(ends[0], &service, sizeof service), static_cast<ssize_t>(sizeof service));
        char bytes[500];
        for (ssize_t got; (got = read(ends[0], bytes, sizeof bytes)) > 0;)
            folder.append(bytes, static_cast<size_t>(got));
        close(ends[0]);
        if (service) watched = static_cast<int>(syscall(SYS_pidfd_open, service, 0));
    }
    ~Victim()
    {
        end();
        if (watched >= 0) close(watched);
    }
    Victim(const Victim &) = delete;

    void end()
    {
        if (process > 0) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
        process = 0;
    }
    // Returns when a service in a child process has ended.
    void wait_for_service() const
    {
        if (watched < 0) return;
        pollfd ending{watched, POLLIN, 0};
        EXPECT_EQ(poll(&ending, 1, 20000), 1);
    }

    std::string folder;
    pid_t service = 0; // 0: the process itself

private:
    pid_t process = 0;
    int watched = -1;
};

TEST_P(Embedded, what_a_killed_process_left_is_swept_by_the_next_one)
{
    Victim victim(start);
    ASSERT_TRUE(fs::exists(victim.folder + "/north/6.seq"));
    Simulator(start, 1).stop();
    EXPECT_TRUE(fs::exists(victim.folder + "/north/6.seq")) << "it still runs";
    victim.end();
    victim.wait_for_service();
    EXPECT_TRUE(fs::exists(victim.folder));
    const Simulator next(start, 1);
    EXPECT_FALSE(fs::exists(victim.folder));
    EXPECT_EQ(arrivals(), 1u);
}

TEST_P(Embedded, only_folders_that_a_simulator_locked_are_swept)
{
    const Folder folder;
    const std::string pattern = (fs::temp_directory_path() / "ponsim-embedded.").string();
    const std::string unlocked = pattern + "tests0", longer = pattern + "tests00", file = pattern + "tests1";
    fs::create_directory(unlocked);
    fs::create_directory(longer);
    std::ofstream(longer + "/.lock").flush();
    std::ofstream(file).flush();
    const std::string link = pattern + "tests2";
    std::ofstream(folder.path + "/.lock").flush();
    fs::create_directory_symlink(folder.path, link);
    Simulator(start, 1).stop();
    for (const std::string &name : {unlocked, longer, file, link, folder.path + "/.lock"}) {
        EXPECT_TRUE(fs::exists(name)) << name;
        if (name.starts_with(pattern)) fs::remove_all(name);
    }
}

INSTANTIATE_TEST_SUITE_P(InProcess, Embedded, testing::Values(&in_process));
INSTANTIATE_TEST_SUITE_P(AsChild, Embedded, testing::Values(&as_child));

TEST(Child, that_cannot_be_run_is_explained)
{
    char error[500];
    EXPECT_EQ(bsp_simulator_spawn(nullptr, "no-such-program", error, sizeof error), nullptr);
    EXPECT_STREQ(error, "no-such-program did not start: it ended with status 127; it said: No such file or directory");
    EXPECT_EQ(bsp_simulator_spawn(nullptr, "no-such-program", nullptr, 0), nullptr);
}

TEST(Child, that_ends_at_once_is_explained)
{
    char error[500];
    EXPECT_EQ(bsp_simulator_spawn(nullptr, "false", error, sizeof error), nullptr);
    EXPECT_STREQ(error, "false did not start: it ended with status 1");
}

TEST(Child, that_is_killed_later_is_told_by_the_next_control_line)
{
    const Simulator simulator(as_child, 1);
    ASSERT_EQ(children().size(), 1u);
    kill(children()[0], SIGKILL);
    std::string text;
    while ((text = said(simulator, "now")).find("runs no more") == std::string::npos)
        EXPECT_EQ(text.substr(0, 9), "refused: ");
    EXPECT_EQ(text, "refused: ponsim runs no more: it was ended by signal 9");
}

TEST(Child, outlives_the_thread_that_started_it)
{
    std::unique_ptr<Simulator> simulator;
    std::thread([&] { simulator = std::make_unique<Simulator>(as_child, 1); }).join();
    EXPECT_EQ(said(*simulator, "now"), "0 s of model time\n");
}

TEST(Child, keeps_its_folder_when_it_outlives_its_parent)
{
    Victim victim(as_child);
    kill(victim.service, SIGSTOP);
    victim.end();
    Simulator(as_child, 1).stop();
    EXPECT_TRUE(fs::exists(victim.folder + "/north/6.seq"));
    kill(victim.service, SIGCONT);
    victim.wait_for_service();
    Simulator(as_child, 1).stop();
    EXPECT_FALSE(fs::exists(victim.folder));
}

TEST(Child, ends_with_its_parent)
{
    const Folder folder;
    const bsp_simulator_options options{.socket_dir = folder.path.c_str()};
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t parent = fork();
    if (parent == 0) {
        as_child(options, nullptr, 0);
        const std::vector<pid_t> started = children();
        if (started.size() != 1 || write(ends[1], &started[0], sizeof(pid_t)) != sizeof(pid_t)) _exit(1);
        for (;;)
            pause();
    }
    pid_t started = 0;
    ASSERT_EQ(read(ends[0], &started, sizeof started), static_cast<ssize_t>(sizeof started));
    const int watched = static_cast<int>(syscall(SYS_pidfd_open, started, 0));
    ASSERT_GE(watched, 0);
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    pollfd end{watched, POLLIN, 0};
    EXPECT_EQ(poll(&end, 1, 20000), 1);
    for (const int each : {ends[0], ends[1], watched})
        close(each);
}

} // namespace

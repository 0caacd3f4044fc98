// These tests hold a daemon against a model of it: a simulator in this process that gets the same requests. The daemon
// is killed, stopped and started again, and its disk is full at times. After each life it must have kept what it
// acknowledged, and nothing else.
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <sstream>
#include <thread>

#include <sys/resource.h>

#include "any_record.h"
#include "board/ipc.h"
#include "board/service.h"
#include "daemon.h"
#include "optics.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace ponsim
{
namespace
{

constexpr uint32_t lives = 16;
constexpr uint32_t things_a_life = 25;

// The IPC library reads its folder once.
const Folder &folder()
{
    static const Folder only;
    setenv("BOARD_IPC_DIR", only.file("ipc").c_str(), 1);
    return only;
}

// Returns the commands that change something and do not depend on what a process remembers of others. A part of a
// configuration is remembered until it is loaded.
std::vector<const catalogue::Command *> commands_that_change()
{
    std::vector<const catalogue::Command *> found;
    for (const catalogue::Command &command : catalogue::commands()) {
        const catalogue::Call call = command.call.value_or(catalogue::Call::set);
        const bool configuration = command.channel->type == BSP_MSG_PROFILE;
        if (command.impact != catalogue::Class::read && !configuration &&
            find_handler(command.channel->type, command.code, call))
            found.push_back(&command);
    }
    return found;
}

// Returns the status, or none when nobody can know whether the request took effect.
std::optional<uint32_t> ask_daemon(const Message &message)
{
    const auto set = message.call == catalogue::Call::dgram_set ? ipc_dgram_set_exec : ipc_set_exec;
    const auto get = message.call == catalogue::Call::dgram_get ? ipc_dgram_get_exec : ipc_get_exec;
    uint32_t status = 0;
    if (!is_get(message)) {
        if (set(BSP_IPC_MODULE, message.channel, message.data, message.length, &status)) return std::nullopt;
        return status;
    }
    std::string answer(IPC_MAX_LENGTH, '\0');
    auto length = static_cast<uint32_t>(answer.size());
    if (get(BSP_IPC_MODULE, message.channel, message.data, message.length, answer.data(), &length, &status))
        return std::nullopt;
    return status;
}

std::string text_of(const Row &row)
{
    std::ostringstream text;
    text << row.table;
    for (const Cell &cell : row.cells)
        if (const auto *number = std::get_if<int64_t>(&cell))
            text << ' ' << *number;
        else if (const auto *blob = std::get_if<Blob>(&cell))
            text << " x" << text::to_hex({reinterpret_cast<const uint8_t *>(blob->bytes.data()), blob->bytes.size()});
        else
            text << " '" << std::get<std::string>(cell) << '\'';
    return text.str().substr(0, 200);
}

void expect_same_rows(const std::vector<Row> &kept, const std::vector<Row> &acknowledged)
{
    std::vector<Row> strange, lost;
    std::ranges::set_difference(kept, acknowledged, std::back_inserter(strange));
    std::ranges::set_difference(acknowledged, kept, std::back_inserter(lost));
    for (const Row &row : strange)
        ADD_FAILURE() << "kept, but not acknowledged: " << text_of(row);
    for (const Row &row : lost)
        ADD_FAILURE() << "acknowledged, but not kept: " << text_of(row);
}

class Session
{
public:
    explicit Session(uint64_t number)
        : random(number, 5),
          model({.seed = number, .ports = 2, .arrivals = 4, .silent = 0}),
          options{"--state", state(),   "--seed", std::to_string(number), "--ports", "2", "--arrivals", "4", "--silent",
                  "0",       "--speed", "0"}
    {
        std::filesystem::remove(state());
        model.simulator.use_upgrade_folder(folder().file("ipc") + "/upgrade");
        for (uint32_t id = 1; id <= 3; ++id)
            first.push_back(record_of(BSP_CMD_ONU_BIND, 1, id, model.port(1).arrivals.at(id - 1).mac));
    }

    void run()
    {
        for (uint32_t life = 0; life < lives && !testing::Test::HasFailure(); ++life) {
            SCOPED_TRACE("life " + std::to_string(life));
            live(life);
        }
    }

    uint32_t changes = 0;  // acknowledged requests that changed what is kept
    uint32_t unstored = 0; // requests that found the disk full

private:
    static std::string state() { return folder().file("olt.db"); }

    void live(uint32_t life)
    {
        Daemon daemon(options);
        ASSERT_TRUE(daemon.serves());
        for (; !first.empty(); first.pop_back())
            request(message_of(first.back()));
        const uint32_t full_from = life % 4 == 3 ? random.below(things_a_life) : things_a_life;
        for (uint32_t thing = 0; thing < things_a_life && !testing::Test::HasFailure(); ++thing) {
            if (thing == full_from) fill_disk(daemon.process());
            happen(thing >= full_from);
        }
        switch (random.below(3)) {
        case 0:
            // With a full disk it cannot keep the time, and says so.
            EXPECT_TRUE(daemon.stop(SIGTERM) == 0 || full_from < things_a_life);
            break;
        case 1:
            daemon.stop(SIGKILL);
            break;
        default:
            die_in_a_request(daemon);
        }
        expect_same_rows(kept_rows(), rows_of_model());
    }

    // What follows at once from the last request may happen before the daemon is killed, or when it starts again.
    static std::vector<Row> rows_when_settled(ServiceFixture &fixture)
    {
        fixture.simulator.advance(fixture.simulator.olt().now());
        std::vector<Row> rows = fixture.store.rows();
        std::ranges::sort(rows);
        return rows;
    }
    static std::vector<Row> kept_rows()
    {
        ServiceFixture daemons({}, state());
        return rows_when_settled(daemons);
    }
    std::vector<Row> rows_of_model() { return rows_when_settled(model); }

    static void fill_disk(pid_t daemon)
    {
        rlimit limit{};
        ASSERT_EQ(prlimit(daemon, RLIMIT_FSIZE, nullptr, &limit), 0);
        limit.rlim_cur = std::filesystem::file_size(state() + "-wal");
        ASSERT_EQ(prlimit(daemon, RLIMIT_FSIZE, &limit, nullptr), 0);
    }

    // Lets one thing happen to both.
    void happen(bool disk_is_full)
    {
        const uint32_t kind = random.below(10);
        if (kind == 0 && !disk_is_full) {
            wait(1 + random.below(300));
        } else if (kind == 1 && !disk_is_full) {
            load_earlier_configuration();
        } else if (kind <= 3) {
            const auto &arrivals = model.port(1 + random.below(2)).arrivals;
            const Mac &mac = arrivals.at(random.below(static_cast<uint32_t>(arrivals.size()))).mac;
            request(message_of(record_of(BSP_CMD_ONU_BIND, 1 + random.below(2), random.below(6), mac)));
        } else {
            const std::string record = any_record();
            request({chosen->channel->type, record.data(), static_cast<uint32_t>(record.size()),
                     chosen->call.value_or(catalogue::Call::set)});
        }
        if (random.below(10) == 0) texts.push_back(model_configuration());
    }

    std::string any_record()
    {
        chosen = commands.at(random.below(static_cast<uint32_t>(commands.size())));
        return record_of_command(*chosen, random);
    }

    void wait(uint32_t seconds)
    {
        constexpr uint32_t module = 106, channel = 1;
        const std::string line = "step " + std::to_string(seconds);
        std::string said(IPC_MAX_LENGTH, '\0');
        auto length = static_cast<uint32_t>(said.size());
        uint32_t status = 0;
        ASSERT_EQ(ipc_get_exec(module, channel, line.data(), static_cast<uint32_t>(line.size()), said.data(), &length,
                               &status),
                  IPC_OK);
        EXPECT_EQ(status, 0u);
        pass(model, seconds * ms_per_second);
        model.simulator.keep_time();
    }

    // Makes a request to both. What the daemon could not store does not happen to the model.
    void request(const Message &message)
    {
        const std::optional<uint32_t> status = ask_daemon(message);
        ASSERT_TRUE(status) << "the daemon is gone";
        if (*status == PON_ERR_STORE) {
            ++unstored;
            return;
        }
        const std::vector<Row> before = rows_of_model();
        EXPECT_EQ(model.simulator.handle(message).status, *status) << name_of(message);
        changes += rows_of_model() != before;
    }

    static std::string name_of(const Message &message)
    {
        return "channel " + std::to_string(message.channel) + ", command " +
               std::to_string(command_of(message).value_or(0));
    }

    // Kills the daemon while it works on a request. Afterwards it has kept all of the request or nothing.
    void die_in_a_request(Daemon &daemon)
    {
        std::string record = any_record();
        Message message{chosen->channel->type, record.data(), static_cast<uint32_t>(record.size()),
                        chosen->call.value_or(catalogue::Call::set)};
        if (!texts.empty() && random.below(2) == 0) {
            record = upload(texts.at(random.below(static_cast<uint32_t>(texts.size()))));
            message = profile_message(record);
        }
        const auto delay = std::chrono::microseconds(random.below(400));
        std::thread killer([&] {
            std::this_thread::sleep_for(delay);
            daemon.stop(SIGKILL);
        });
        const uint32_t usual_timeout = board_ipc_use_thread_timeout(500);
        const std::optional<uint32_t> status = ask_daemon(message);
        board_ipc_use_thread_timeout(usual_timeout);
        killer.join();
        const bool refused_by_disk = status == PON_ERR_STORE;
        const bool lost = !status && kept_rows() == rows_of_model();
        if (refused_by_disk || lost) return;
        const uint32_t should_be = model.simulator.handle(message).status;
        EXPECT_EQ(status.value_or(should_be), should_be) << name_of(message);
    }

    // Returns a record of the profile channel.
    static std::string profile_record(uint32_t action, const std::string &payload)
    {
        bsp_profile_msg record{};
        record.action = action;
        payload.copy(reinterpret_cast<char *>(record.data), sizeof record.data);
        return {reinterpret_cast<const char *>(&record), payload_header + payload.size()};
    }

    static Message profile_message(const std::string &record)
    {
        return {BSP_MSG_PROFILE, record.data(), static_cast<uint32_t>(record.size()), catalogue::Call::dgram_set,
                geteuid()};
    }

    std::string model_configuration()
    {
        const std::string record = profile_record(BSP_CMD_CONFIG_READ, {});
        Message message = profile_message(record);
        message.call = catalogue::Call::dgram_get;
        return model.simulator.handle(message).file.value().content;
    }

    // Sends a configuration to both, and returns the request that loads it.
    std::string upload(const std::string &text)
    {
        constexpr size_t longest_part = 4000;
        const text::Sha256 digest = text::sha256(text);
        const std::string name(digest.begin(), digest.end());
        for (size_t offset = 0; offset < text.size(); offset += longest_part) {
            const std::string part = text.substr(offset, longest_part);
            const uint32_t head[] = {static_cast<uint32_t>(offset), static_cast<uint32_t>(text.size()),
                                     static_cast<uint32_t>(part.size())};
            const std::string payload = std::string(reinterpret_cast<const char *>(head), sizeof head) + name + part;
            request(profile_message(profile_record(BSP_CMD_CONFIG_LOAD_PART, payload)));
        }
        return profile_record(BSP_CMD_CONFIG_LOAD, name);
    }

    void load_earlier_configuration()
    {
        if (texts.empty()) return;
        const std::string record = upload(texts.at(random.below(static_cast<uint32_t>(texts.size()))));
        request(profile_message(record));
    }

    Random random;
    ServiceFixture model;
    const std::vector<std::string> options;
    std::vector<bsp_pon_msg> first; // requests that bring the first ONUs
    const std::vector<const catalogue::Command *> commands = commands_that_change();
    const catalogue::Command *chosen = nullptr;
    std::vector<std::string> texts; // configurations that the model had
};

TEST(Session, LosesNothingAcknowledgedWhateverHappensToTheDaemon)
{
    uint32_t changes = 0, unstored = 0;
    for (uint64_t number = 1; number <= 3 && !HasFailure(); ++number) {
        SCOPED_TRACE("session " + std::to_string(number));
        Session session(number);
        session.run();
        changes += session.changes;
        unstored += session.unstored;
    }
    EXPECT_GT(changes, 100u);
    EXPECT_GT(unstored, 5u);
}

} // namespace
} // namespace ponsim

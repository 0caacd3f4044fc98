// These tests run ponctl config as a process against a fake service.
#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"
#include "text/sha256.h"

namespace
{

using testing::HasSubstr;

// Config makes a folder that exists as long as the test.
class Config : public testing::Test
{
protected:
    Config()
    {
        std::string name = testing::TempDir() + "ponctl-XXXXXX";
        folder = mkdtemp(name.data());
    }
    ~Config() override { std::filesystem::remove_all(folder); }

    std::string path(const char *name) const { return (folder / name).string(); }
    void write(const char *name, const std::string &text) const { std::ofstream(path(name)) << text; }
    std::string content(const char *name) const
    {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Returns a handler that answers with this configuration as a file.
    static FakeService::Handler answer_with(const std::string &configuration)
    {
        return [configuration](const board_request &, board_answer *answer) {
            const auto size = static_cast<uint32_t>(configuration.size());
            std::array<char, 24 + sizeof BOARD_RESULT_FILE> data{};
            std::memcpy(&data[8], &size, sizeof size);
            std::memcpy(&data[24], BOARD_RESULT_FILE, sizeof BOARD_RESULT_FILE);
            board_answer_data(answer, data.data(), data.size());
            board_answer_file(answer, configuration.data(), size);
        };
    }

    std::filesystem::path folder;
};

TEST_F(Config, IsSavedInAFileThatOnlyItsOwnerReads)
{
    write("saved", "old");
    const FakeService service(answer_with("line 1\nline 2\n"));
    EXPECT_EQ(service.ponctl({"config", "save", path("saved")}).code, 0);
    EXPECT_EQ(content("saved"), "line 1\nline 2\n");
    EXPECT_EQ(std::filesystem::status(path("saved")).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(service.received().at(0).word(0), 1u);
    EXPECT_EQ(service.received().at(0).channel, 235u);
}

TEST_F(Config, IsSavedToStandardOutput)
{
    const FakeService service(answer_with("line 1\nline 2\n"));
    EXPECT_EQ(service.ponctl({"config", "save", "-"}).out, "line 1\nline 2\n");
}

TEST_F(Config, AFileStaysWhereTheServiceRefuses)
{
    write("saved", "old");
    const FakeService service(status(4026));
    EXPECT_EQ(service.ponctl({"config", "save", path("saved")}).code, 1);
    EXPECT_EQ(content("saved"), "old");
}

TEST_F(Config, AFileThatCannotBeWrittenIsNamed)
{
    const FakeService service(answer_with("text"));
    const Finished finished = service.ponctl({"config", "save", "/nowhere/olt"});
    EXPECT_EQ(finished.code, 4);
    EXPECT_THAT(finished.err, HasSubstr("/nowhere/olt: cannot be written"));
}

TEST_F(Config, IsLoadedInPartsAndThenTaken)
{
    const std::string text = std::string(4048, 'a') + "rest";
    const text::Sha256 digest = text::sha256(text);
    const auto digest_at = [](const Received &request, size_t offset) {
        text::Sha256 found{};
        if (request.record.size() >= offset + found.size())
            std::copy_n(request.record.begin() + static_cast<ptrdiff_t>(offset), found.size(), found.begin());
        return found;
    };
    write("saved", text);
    const FakeService service;
    EXPECT_EQ(service.ponctl({"config", "load", path("saved"), "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].word(0), 2u);
    EXPECT_EQ(received[0].word(24), 0u);
    EXPECT_EQ(received[0].word(28), 4052u);
    EXPECT_EQ(received[0].word(32), 4048u);
    EXPECT_EQ(digest_at(received[0], 36), digest);
    EXPECT_EQ(received[1].word(24), 4048u);
    EXPECT_EQ(received[1].word(32), 4u);
    EXPECT_EQ(digest_at(received[1], 36), digest);
    EXPECT_EQ(received[1].text(68), "rest");
    EXPECT_EQ(received[2].word(0), 3u);
    EXPECT_EQ(digest_at(received[2], 24), digest);
    EXPECT_EQ(received[2].call, BOARD_CALL_DGRAM_SET);
}

TEST_F(Config, LoadingStopsAtAPartThatIsRefused)
{
    write("saved", std::string(10000, 'a'));
    const FakeService service(status(4095));
    const Finished finished = service.ponctl({"config", "load", path("saved"), "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("PON_ERR_BAD_CONFIG"));
    EXPECT_EQ(service.received().size(), 1u);
}

TEST_F(Config, LoadingNeedsAFileAndAConfirmation)
{
    write("saved", "text");
    write("empty", "");
    const FakeService service;
    EXPECT_THAT(service.ponctl({"config", "load", path("saved")}).err, HasSubstr("--yes: missing; loading"));
    EXPECT_THAT(service.ponctl({"config", "load", path("none"), "--yes"}).err, HasSubstr("none"));
    EXPECT_THAT(service.ponctl({"config", "load", path("empty"), "--yes"}).err, HasSubstr("empty is empty"));
    EXPECT_EQ(service.ponctl({"config", "load", path("empty"), "--yes"}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

} // namespace

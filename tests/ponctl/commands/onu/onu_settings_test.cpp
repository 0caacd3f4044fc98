// These tests run the commands of ponctl onu that configure remote ONUs as a process against a fake service.
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr size_t onu = 4, uni = 8, code = 16, arg24 = 24, data = 352; // offsets in a record of the remote-ONU channels

TEST(OnuMultiLlid, SendsTheCount)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "multillid", "1/5-6", "3", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[1].word(code), 642u);
    EXPECT_EQ(service.received()[1].word(onu), 6u);
    EXPECT_EQ(service.received()[1].word(arg24), 3u);
}

TEST(OnuImageCommit, GoesOnWhereOneFails)
{
    const FakeService service(status(4013));
    const Finished finished = service.ponctl({"onu", "image", "commit", "1/5-6", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].word(code), 699u);
    EXPECT_THAT(finished.err, HasSubstr("ponctl: 2 of 2 ONUs failed: 1/5-6\n"));
}

TEST(OnuSet, IsFoundByNameOrByWords)
{
    const FakeService service;
    for (const Words &name :
         std::vector<Words>{{"BSP_CMD_ONU_IMAGE_COMMIT"}, {"image-commit"}, {"image", "commit"}, {"Image_Commit"}}) {
        Words words{"onu", "set", "1/5", "--yes"};
        words.insert(words.end(), name.begin(), name.end());
        EXPECT_EQ(service.ponctl(words).code, 0) << name.front();
        EXPECT_EQ(service.received().back().word(code), 699u);
    }
}

TEST(OnuSet, GoesToTheChannelOfItsCommand)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5", "image-update", "uni=2", "onu_data=hex:0a0b", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5-6", "multi-llid", "onu_arg24=3", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].channel, 238u);
    EXPECT_EQ(received[0].word(code), 694u);
    EXPECT_EQ(received[0].record[uni], 2);
    EXPECT_EQ(received[0].record[data + 1], 0x0b);
    EXPECT_EQ(received[2].channel, 237u);
    EXPECT_EQ(received[2].word(0), 1u);
    EXPECT_EQ(received[2].word(onu), 6u);
    EXPECT_EQ(received[2].word(arg24), 3u);
}

TEST(OnuSettings, AreListedWithTheirFields)
{
    const FakeService service;
    const std::string all = service.ponctl({"onu", "settings"}).out;
    EXPECT_THAT(all, HasSubstr("multi-llid"));
    EXPECT_THAT(all, HasSubstr("mgmt"));
    const auto fields = parsed(service.ponctl({"onu", "settings", "image-update", "-o", "json"}).out);
    EXPECT_STREQ(fields[0]["field"].GetString(), "uni");
    EXPECT_TRUE(service.received().empty());
}

// OnuImagePush has an image of 3000 bytes in a file of its own.
class OnuImagePush : public testing::Test
{
protected:
    OnuImagePush()
    {
        std::ofstream file(path, std::ios::binary);
        for (int at = 0; at < 3000; ++at)
            file.put(static_cast<char>(at % 251));
    }
    ~OnuImagePush() override { std::filesystem::remove(path); }

    const std::string path = testing::TempDir() + "ponctl_image_" + std::to_string(getpid());
};

TEST_F(OnuImagePush, SendsPartsUntilTheImageIsThere)
{
    const FakeService service;
    const Finished finished = service.ponctl({"onu", "image", "push", "1/5", path, "--version", "2.0", "--yes"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    size_t next = 0;
    for (const Received &part : service.received()) {
        EXPECT_EQ(part.word(code), 698u);
        EXPECT_EQ(part.number("offset"), next);
        EXPECT_EQ(part.number("size"), 3000u);
        for (size_t at = 0; at < part.number("length"); ++at)
            ASSERT_EQ(part.record[data + 32 + at], (next + at) % 251);
        next += part.number("length");
    }
    EXPECT_EQ(next, 3000u);
    EXPECT_EQ(service.received().at(0).text(data + 12), "2.0");
}

TEST_F(OnuImagePush, StopsAtAPartThatIsRefusedAndGoesOnWithTheNextOnu)
{
    const FakeService service(status(4013));
    const Finished finished = service.ponctl({"onu", "image", "push", "1/5-6", path, "--version", "2.0", "--yes"});
    EXPECT_EQ(finished.code, 1);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[1].word(onu), 6u);
}

TEST_F(OnuImagePush, RefusesALongVersionAndAFileThatIsNotThere)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "image", "push", "1/5", path, "--version", std::string(17, '1'), "--yes"}).err,
              "ponctl: --version: 17 bytes are more than the 16 that there can be\n");
    EXPECT_EQ(service.ponctl({"onu", "image", "push", "1/5", path + "x", "--version", "1", "--yes"}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuSet, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"multillid", "1/5", "x", "--yes"}, "COUNT: 'x' is not a number"},
        {{"multillid", "1/5-6", "3"}, "--yes: missing; changing the number of LLIDs of ONUs 1/5-6"},
        {{"image", "commit", "1/5"}, "--yes: missing; having ONU 1/5 start the new image from now on"},
        {{"set", "1/5", "multi-llid", "onu_arg24=3"}, "--yes: missing; sending BSP_CMD_ONU_MULTI_LLID_SET to ONU 1/5"},
        {{"set", "1/5", "uni=2"}, "COMMAND: missing"},
        {{"set", "1/5", "multi-lid"}, "COMMAND: 'multi-lid' is not a setting; did you mean multi-llid?"},
        {{"set", "1/5", "BSP_CMD_ONU_SN_GET"}, "COMMAND: 'sn-get' is not a setting"},
        {{"set", "1/5", "image-update", "speed=3"}, "speed: not a field of BSP_CMD_ONU_IMAGE_UPDATE"},
        {{"set", "1/5", "image-update", "onu_pon_port=3"}, "onu_pon_port: not a field of BSP_CMD_ONU_IMAGE_UPDATE"},
        {{"set", "1/5", "multi-llid", "onu_arg24=x"}, "onu_arg24: 'x' is not a number"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"onu"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << error;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

} // namespace

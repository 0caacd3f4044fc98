// These tests run the commands of ponctl onu that configure remote ONUs as a process against a fake service.
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
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

// The answer to the query of VLANs.
std::vector<uint8_t> vlans(const std::map<std::string, int64_t> &numbers)
{
    return answer_to("BSP_CMD_ONU_VLAN_GET", numbers);
}

// A Vlans answers the query of VLANs, and remembers what it is sent.
class Vlans
{
public:
    FakeService::Handler handler()
    {
        return [this](const board_request &request, board_answer *answer) {
            if (request.call == BOARD_CALL_SET)
                stored.assign(static_cast<const uint8_t *>(request.data),
                              static_cast<const uint8_t *>(request.data) + request.length);
            if (request.call == BOARD_CALL_GET) bytes(stored)(request, answer);
        };
    }

    std::vector<uint8_t> stored = vlans(
        {{"mode", 3}, {"count", 1}, {"pvid", 5}, {"priority", 2}, {"tpid", 0x8100}, {"user_1", 7}, {"network_1", 7}});
};

TEST(OnuSet, KeepsWhatIsNotNamed)
{
    Vlans onu_vlans;
    const FakeService service(onu_vlans.handler());
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5", "vlan", "uni=2", "pvid=100", "--yes"}).code, 0);
    ASSERT_EQ(service.settings().size(), 1u);
    const Received sent = service.settings()[0];
    EXPECT_EQ(sent.word(code), 644u);
    EXPECT_EQ(sent.record[uni], 2);
    for (const auto &[field, value] :
         {std::pair{"mode", 3u}, {"count", 1u}, {"pvid", 100u}, {"priority", 2u}, {"tpid", 0x8100u}, {"user_1", 7u}})
        EXPECT_EQ(sent.number(field), value) << field;
}

TEST(OnuSet, ClearsWhatHasNoMeaningAnyMore)
{
    Vlans onu_vlans;
    const FakeService service(onu_vlans.handler());
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5", "vlan", "uni=2", "mode=tag", "--yes"}).code, 0);
    const Received sent = service.settings().at(0);
    EXPECT_EQ(sent.number("mode"), 1u);
    EXPECT_EQ(sent.number("pvid"), 5u);
    EXPECT_EQ(sent.number("count"), 0u);
    EXPECT_EQ(sent.number("user_1"), 0u);
}

TEST(OnuSet, SaysWhatChangesBeforeItAsks)
{
    Vlans onu_vlans;
    const FakeService service(onu_vlans.handler());
    Terminal terminal;
    terminal.type("n\n");
    const Finished finished =
        service.ponctl({"onu", "set", "1/5", "vlan", "uni=2", "mode=tag", "pvid=100"}, -1, terminal.descriptor());
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err,
                HasSubstr("mode trunk -> tag, count 1 -> 0, pvid 5 -> 100, user_1 7 -> 0, network_1 7 -> 0\n"));
    EXPECT_THAT(finished.err, HasSubstr("sending BSP_CMD_ONU_VLAN_SET to ONU 1/5? [y/N] "));
    EXPECT_TRUE(service.settings().empty());
}

TEST(OnuSet, SaysWhatBecomesOfFieldsThatAreLeftOut)
{
    const std::string help = ponctl({"onu", "set", "--help"}).out;
    EXPECT_THAT(help, HasSubstr("\nport-config: All settings of the port are written"));
    EXPECT_THAT(help, HasSubstr("\nclassification: Rules with other precedences stay as they are."));
    EXPECT_THAT(help, Not(HasSubstr("\nvlan: ")));
    // A setting that starts from nothing and has several fields says what that means.
    for (const catalogue::Command &command : catalogue::commands()) {
        const catalogue::Layout *layout = catalogue::find_layout(command);
        if ((command.channel->name != "BSP_MSG_ONU_CFG" && command.channel->name != "BSP_MSG_ONU_INFO") ||
            command.impact == catalogue::Class::read || !layout || layout->present || layout->fields.size() < 2)
            continue;
        EXPECT_FALSE(layout->left_out.empty()) << command.name;
    }
}

TEST(OnuSet, ReadsAValueAsTheOtherFieldSays)
{
    const FakeService service;
    EXPECT_EQ(
        service
            .ponctl({"onu", "set", "1/5", "classification", "uni=1", "action=add", "count=1", "precedence_1=1",
                     "entries_1=1", "value_a_1=10.1.2.3", "field_a_1=destination-IPv4", "operator_a_1=equal", "--yes"})
            .code,
        0);
    const Received sent = service.settings().at(0);
    EXPECT_EQ(std::vector<uint8_t>(sent.record.begin() + 360, sent.record.begin() + 366),
              (std::vector<uint8_t>{0, 0, 10, 1, 2, 3}));
    EXPECT_EQ(service
                  .ponctl({"onu", "set", "1/5", "classification", "uni=1", "action=add", "field_a_1=source-IPv4",
                           "value_a_1=7", "--yes"})
                  .err,
              "ponctl: value_a_1: '7' is not an IPv4 address, as 10.0.0.2\n");
}

TEST(OnuSet, TakesAddressesAsPeopleWriteThem)
{
    const FakeService service(bytes(answer_to("BSP_CMD_ONU_MGMT_GET", {})));
    EXPECT_EQ(service
                  .ponctl({"onu", "set", "1/5", "mgmt", "mode=Static-Address", "address=10.1.2.3/20",
                           "gateway=10.1.0.1", "--yes"})
                  .code,
              0);
    const Received sent = service.settings().at(0);
    EXPECT_EQ(std::vector<uint8_t>(sent.record.begin() + data, sent.record.begin() + data + 12),
              (std::vector<uint8_t>{10, 1, 2, 3, 255, 255, 240, 0, 10, 1, 0, 1}));
}

TEST(OnuSet, NamesTheFieldAndTheRule)
{
    const FakeService service;
    const auto error_of = [&service](const Words &words) {
        Words all{"onu", "set", "1/5", "--yes"};
        all.insert(all.end(), words.begin(), words.end());
        const Finished finished = service.ponctl(all);
        EXPECT_EQ(finished.code, 2);
        return finished.err;
    };
    EXPECT_EQ(error_of({"vlan", "uni=1", "pvid=4095"}), "ponctl: pvid: '4095' is not a number from 1 to 4094\n");
    EXPECT_EQ(error_of({"vlan", "uni=1", "mode=9"}),
              "ponctl: mode: '9' is not one of transparent, tag, translation, trunk\n");
    EXPECT_EQ(error_of({"vlan", "uni=1", "mode=tagg"}),
              "ponctl: mode: 'tagg' is not one of transparent, tag, translation, trunk, nor a number\n");
    EXPECT_EQ(error_of({"mgmt", "address=10.0.0.256"}),
              "ponctl: address: '10.0.0.256' is not an IPv4 address, as 10.0.0.2\n");
    EXPECT_EQ(error_of({"mgmt", "address=10.0.0.2/33"}),
              "ponctl: address: '33' is not the length of a mask, 0 to 32\n");
    EXPECT_EQ(error_of({"vlan", "pvid=1"}), "ponctl: uni: missing; give the number of a UNI port\n");
    EXPECT_EQ(error_of({"wlan", "name=x"}), "ponctl: index: missing; give the number of the WLAN, 1 to 4\n");
    EXPECT_EQ(error_of({"vlan", "uni=1", "pvid=1", "pvid=2"}), "ponctl: pvid: given twice\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuSet, RefusesWhatHasNoMeaningWithTheRest)
{
    const FakeService service(bytes(vlans({{"mode", 1}, {"pvid", 5}})));
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5", "vlan", "uni=1", "count=1", "--yes"}).err,
              "ponctl: count: has a meaning only where mode is translation or trunk\n");
    EXPECT_TRUE(service.settings().empty());
}

TEST(OnuSet, StartsFromTheRowOfItsNumber)
{
    const FakeService service(by_command(
        {{734, rows(734, R"([{"index":1,"name":"a","mode":"bridge","service":"internet","vlan":10,"priority":1},
                             {"index":2,"name":"b","mode":"route","service":"voice","vlan":20,"priority":3,
                              "ip_mode":"DHCP","address":"10.0.0.9/24"}])")}}));
    EXPECT_EQ(service.ponctl({"onu", "set", "1/5", "wan", "index=2", "vlan=21", "--yes"}).code, 0);
    const Received sent = service.settings().at(0);
    for (const auto &[field, value] : {std::pair{"index", 2u},
                                       {"mode", 2u},
                                       {"service", 2u},
                                       {"vlan", 21u},
                                       {"priority", 3u},
                                       {"ip_mode", 2u},
                                       {"address", 0u}})
        EXPECT_EQ(sent.number(field), value) << field;
    EXPECT_EQ(sent.text(372), "b");
}

TEST(OnuSet, LeavesAnOnuAloneThatDoesNotSayHowItStands)
{
    const FakeService service(status(4013));
    const Finished finished = service.ponctl({"onu", "set", "1/5-6", "vlan", "uni=1", "pvid=2", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("ponctl: 1/5: bsp_pon_onu_ctc_get_vlan: status 4013"));
    EXPECT_THAT(finished.err, HasSubstr("ponctl: 2 of 2 ONUs failed: 1/5-6\n"));
    EXPECT_TRUE(service.settings().empty());
}

} // namespace

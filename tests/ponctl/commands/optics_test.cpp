// These tests run ponctl optics as a process against a fake service.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

const auto diagnostics = answer_to("BSP_CMD_OPTICS_DIAG_GET", {{"temperature", 4457},
                                                               {"voltage", 32659},
                                                               {"bias", 31604},
                                                               {"launch_power", -150},
                                                               {"alarms", 0x0900},
                                                               {"laser", 1}});

TEST(Optics, AreATableOfAllPorts)
{
    const FakeService service(
        by_command({{386, rows(386, R"([{"pon_port":1},{"pon_port":2}])")}, {487, bytes(diagnostics)}}));
    EXPECT_EQ(service.ponctl({"optics"}).out,
              "PORT TEMPERATURE  VOLTAGE      BIAS LAUNCH POWER LASER ALARMS\n"
              "   1  44.57 degC 3.2659 V 31.604 mA    -1.50 dBm on    bias high, launch power low\n"
              "   2  44.57 degC 3.2659 V 31.604 mA    -1.50 dBm on    bias high, launch power low\n");
    const auto document = parsed(service.ponctl({"optics", "-o", "json"}).out);
    EXPECT_EQ(document[1]["pon_port"].GetUint(), 2u);
    EXPECT_DOUBLE_EQ(document[1]["launch_power"].GetDouble(), -1.5);
}

TEST(Optics, OfAllPortsAreChosenAsOtherListings)
{
    const FakeService service(
        by_command({{386, rows(386, R"([{"pon_port":1},{"pon_port":2}])")}, {487, bytes(diagnostics)}}));
    const Words chosen{"optics",    "--where",          "launch_power<-1dBm and laser=on", "--sort", "-pon_port",
                       "--columns", "PORT,launch_power"};
    EXPECT_EQ(service.ponctl(chosen).out, "PORT LAUNCH POWER\n   2    -1.50 dBm\n   1    -1.50 dBm\n");
    Words in_json = chosen;
    in_json.insert(in_json.end(), {"-o", "json", "--limit", "1"});
    EXPECT_EQ(parsed(service.ponctl(in_json).out), parsed(R"([{"pon_port":2,"launch_power":-1.5}])"));
    const Finished of_one = service.ponctl({"optics", "1", "--limit", "1"});
    EXPECT_EQ(of_one.code, 2);
    EXPECT_THAT(of_one.err, HasSubstr("what is asked for here is no listing"));
}

TEST(Optics, OfAnOnuAreThePowerThatThePortReceives)
{
    const FakeService service(bytes(answer_to("BSP_CMD_OPTICS_RSSI_GET", {{"received_power", -2367}, {"state", 2}})));
    const std::string out = service.ponctl({"optics", "3", "--onu", "5", "--measured"}).out;
    EXPECT_THAT(out, HasSubstr("received_power   -23.67 dBm\n"));
    EXPECT_THAT(out, HasSubstr("state            low alarm\n"));
    const Received request = service.received().at(0);
    EXPECT_EQ(request.number("plat_port"), 3u);
    EXPECT_EQ(request.number("plat_arg4"), 5u);
    EXPECT_EQ(request.number("plat_arg120"), 1u);
}

TEST(OpticsChart, FitsTheTerminal)
{
    const FakeService service(bytes(diagnostics));
    Terminal terminal(40);
    EXPECT_EQ(service
                  .ponctl({"optics", "1", "--chart", "--watch", "0", "--count", "3", "--quantity", "bias"},
                          terminal.descriptor())
                  .code,
              0);
    EXPECT_EQ(service.received().size(), 3u);
    const std::string text = terminal.text();
    EXPECT_THAT(text, HasSubstr("port 1 bias 31.604 mA"));
    EXPECT_THAT(text, HasSubstr("    31.604 |"));
}

TEST(OpticsWatch, EndsWithSuccessWhenInterrupted)
{
    // The interrupt comes with the first reading. Without it the next reading would be an hour away.
    const FakeService service([](const board_request &request, board_answer *answer) {
        kill(request.pid, SIGINT);
        bytes(diagnostics)(request, answer);
    });
    const Finished finished = service.ponctl({"optics", "1", "--onu", "5", "--watch", "3600"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, HasSubstr("received_power"));
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(OpticsWatch, EndsWithAFailedReading)
{
    const FakeService service(status(4003));
    const Finished finished = service.ponctl({"optics", "99", "--watch", "0"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("status 4003 PON_ERR_NO_PORT"));
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(Optics, RefuseWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"--chart"}, "PORT: missing; --chart and --onu are for one port"},
        {{"1", "--measured"}, "--measured: goes with --onu alone"},
        {{"1", "--count", "3"}, "--count: goes with --watch or --chart alone"},
        {{"1", "--watch", "--count", "0"}, "--count: '0' is not a number of readings from 1"},
        {{"1", "--watch=-1"}, "--watch: '-1' is not a number from 0.000 to 4294967.295 s in steps"},
        {{"1", "--chart"}, "--chart: is drawn on a terminal"},
        {{"1", "--quantity", "bias"}, "--quantity requires --chart"},
        {{"-o", "hex"}, "PORT: missing; the bytes are those of one port"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"optics"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << error;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

TEST(OpticsChart, NamesTheQuantitiesThatThereAre)
{
    const FakeService service;
    Terminal terminal;
    EXPECT_THAT(service.ponctl({"optics", "1", "--chart", "--quantity", "colour"}, terminal.descriptor()).err,
                HasSubstr("--quantity: 'colour' is not one of temperature, voltage, bias"));
    EXPECT_TRUE(service.received().empty());
}

} // namespace

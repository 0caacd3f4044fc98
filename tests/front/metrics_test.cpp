// These tests check the text that monitoring systems read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "metrics/metrics.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr UnixTime now = 1'700'000'000'000;

// Returns an OLT with a port, an ONU and its light, all of which were read two seconds ago.
std::shared_ptr<Snapshot> an_olt()
{
    auto snapshot = std::make_shared<Snapshot>();
    for (TableState &state : snapshot->states)
        state = {
            .period = 10, .generation = 3, .read = now - 2'000, .took = 12, .failures = 1, .failed = 0, .error = {}};

    auto ports = std::make_shared<Rows<view::port_info>>();
    view::port_info &port = ports->rows.emplace_back();
    port.pon_port = 1;
    port.laser = true;
    port.tx_power = 3.25;
    port.bound = 4;
    port.online = 3;
    port.up_load = 1.5;
    snapshot->ports = ports;

    auto onus = std::make_shared<Rows<view::onu_info>>();
    view::onu_info &onu = onus->rows.emplace_back();
    onu.pon_port = 1;
    onu.onu_id = 5;
    onu.mac = {2, 0, 0, 0, 0, 5};
    onu.state = "online";
    onu.distance = 1200;
    onu.description = "the \"shop\" \\ 1";
    onus->rows.emplace_back().state = "waiting";
    snapshot->onus = onus;

    auto optics = std::make_shared<Rows<view::onu_optics_table>>();
    view::onu_optics_table &light = optics->rows.emplace_back();
    light.pon_port = 1;
    light.onu_id = 5;
    light.olt_rx_power = -21.5;
    light.bias = 12;
    snapshot->optics = optics;

    auto counters = std::make_shared<Rows<PortCounters>>();
    PortCounters pon{}, uplink{};
    pon.pon = true;
    pon.port = 1;
    pon.in_octets = 7'000'000'000;
    uplink.port = 2;
    uplink.out_discards = 3;
    counters->rows = {pon, uplink};
    snapshot->counters = counters;
    return snapshot;
}

std::string text(const std::shared_ptr<const Snapshot> &snapshot, OnuDetail detail = OnuDetail::all,
                 Format format = Format::prometheus)
{
    const OltSnapshot olts[] = {{"north", snapshot}};
    return metrics_text(olts, detail, format, now);
}

TEST(Metrics, AreThoseOfPortsOnusAndLight)
{
    EXPECT_THAT(text(an_olt()),
                AllOf(HasSubstr("# TYPE pon_olt_up gauge\npon_olt_up{olt=\"north\"} 1\n"),
                      HasSubstr("pon_port_transmit_power_dbm{olt=\"north\",port=\"1\"} 3.25\n"),
                      HasSubstr("pon_port_onus{olt=\"north\",port=\"1\",state=\"offline\"} 1\n"),
                      HasSubstr("pon_port_upstream_load_bytes_per_second{olt=\"north\",port=\"1\"} 187.5\n"),
                      HasSubstr("pon_onu_up{olt=\"north\",port=\"1\",onu=\"5\"} 1\n"),
                      HasSubstr("pon_onu_distance_meters{olt=\"north\",port=\"1\",onu=\"5\"} 1200\n"),
                      HasSubstr("pon_olt_receive_power_dbm{olt=\"north\",port=\"1\",onu=\"5\"} -21.5\n"),
                      HasSubstr("pon_onu_bias_amperes{olt=\"north\",port=\"1\",onu=\"5\"} 0.012\n"),
                      HasSubstr("pon_port_receive_octets_total{olt=\"north\",port=\"1\"} 7000000000\n"),
                      HasSubstr("pon_uplink_transmit_discarded_frames_total{olt=\"north\",port=\"2\"} 3\n"),
                      HasSubstr("pon_table_age_seconds{olt=\"north\",table=\"onus\"} 2\n"),
                      HasSubstr("pon_table_failures_total{olt=\"north\",table=\"onus\"} 1\n"),
                      HasSubstr("pon_table_read_seconds{olt=\"north\",table=\"onus\"} 0.012\n")));
}

TEST(Metrics, WhatIsNullHasNoSample)
{
    EXPECT_THAT(text(an_olt()), Not(HasSubstr("pon_onu_receive_power_dbm{")));
}

TEST(Metrics, TextsAreInTheInfoAloneAndEscaped)
{
    EXPECT_THAT(text(an_olt()),
                HasSubstr("pon_onu_info{olt=\"north\",port=\"1\",onu=\"5\",mac=\"02:00:00:00:00:05\","
                          "description=\"the \\\"shop\\\" \\\\ 1\",vendor=\"\",model=\"\",firmware=\"\"} 1\n"));
}

TEST(Metrics, HaveAsMuchOfOnusAsIsWanted)
{
    EXPECT_THAT(text(an_olt(), OnuDetail::none), Not(HasSubstr("pon_onu")));
    EXPECT_THAT(text(an_olt(), OnuDetail::state),
                AllOf(HasSubstr("pon_onu_up"), Not(HasSubstr("power_dbm{olt=\"north\",port=\"1\",onu"))));
    EXPECT_THAT(text(an_olt(), OnuDetail::optics),
                AllOf(HasSubstr("pon_olt_receive_power_dbm"), Not(HasSubstr("pon_onu_upstream"))));
}

TEST(Metrics, OfATableThatIsOutdatedAreLeftOut)
{
    const auto snapshot = an_olt();
    TableState &state = snapshot->states[static_cast<size_t>(Table::onus)];
    state.read = now - 31'000;
    state.failed = 4;
    EXPECT_THAT(text(snapshot), AllOf(HasSubstr("pon_olt_up{olt=\"north\"} 0\n"), Not(HasSubstr("pon_onu_up{")),
                                      HasSubstr("pon_table_age_seconds{olt=\"north\",table=\"onus\"} 31\n")));
}

TEST(Metrics, OfSeveralOltsStandByFamily)
{
    const OltSnapshot olts[] = {{"north", an_olt()}, {"south", an_olt()}};
    EXPECT_THAT(metrics_text(olts, OnuDetail::all, Format::prometheus, now),
                HasSubstr("pon_olt_up{olt=\"north\"} 1\npon_olt_up{olt=\"south\"} 1\n#"));
}

TEST(Metrics, InTheNewerFormatDescribeFamiliesAndHaveAnEnd)
{
    EXPECT_THAT(text(an_olt(), OnuDetail::all, Format::openmetrics),
                AllOf(HasSubstr("# TYPE pon_port_receive_octets counter\npon_port_receive_octets_total{"),
                      HasSubstr("# TYPE pon_onu info\npon_onu_info{"), EndsWith("\n# EOF\n")));
    EXPECT_THAT(text(an_olt()), AllOf(HasSubstr("# TYPE pon_port_receive_octets_total counter\n"),
                                      HasSubstr("# TYPE pon_onu_info gauge\n"), Not(HasSubstr("# EOF"))));
}

TEST(MetricsFormat, IsTheOneThatTheClientAccepts)
{
    EXPECT_EQ(accepted_format(""), Format::prometheus);
    EXPECT_EQ(accepted_format("text/plain;version=0.0.4"), Format::prometheus);
    EXPECT_EQ(accepted_format("application/openmetrics-text;version=1.0.0,text/plain;q=0.5"), Format::openmetrics);
}

} // namespace

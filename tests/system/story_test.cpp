// This test plays how an unknown ONU becomes a customer's ONU. Each step is a front end of its own: a process that
// makes one call through the library and ends.
#include <algorithm>
#include <cstring>

#include "bsp_pon.h"
#include "control.h"
#include "generated/service_words.h"
#include "process.h"
#include "simulator.h"
#include "view.h"

namespace
{

constexpr uint32_t port = 3;

bsp_pon_msg record_of_port()
{
    bsp_pon_msg record{};
    record.pon_port = port;
    return record;
}

// Returns the status word of a call that another process makes.
template <class Call>
std::string status_of(Call call)
{
    return elsewhere([&call] { return std::to_string(call()); });
}

// Returns a cell of the ONU from a view that another process asks for. The request has a record of the port when the
// view takes one. Returns "none" when the view does not have the ONU.
using ByRecord = uint32_t (*)(db_handle **, bsp_pon_msg *);
using OfAll = uint32_t (*)(db_handle **);

std::string cell(ByRecord ask, const std::string &mac, const char *column)
{
    return elsewhere([&] {
        bsp_pon_msg record = record_of_port();
        return View([&](db_handle **db) { return ask(db, &record); }).of(mac, column);
    });
}

std::string cell(OfAll ask, const std::string &mac, const char *column)
{
    return elsewhere([&] { return View(ask).of(mac, column); });
}

class Story : public testing::Test
{
protected:
    std::string information(const char *column) { return cell(bsp_pon_get_onu_info_web, mac, column); }
    uint32_t onu_id() { return static_cast<uint32_t>(std::stoul(information("onu_id"))); }

    Simulator simulator{{"--arrivals", "4", "--silent", "0"}};
    std::string mac = elsewhere([] {
        bsp_pon_msg record = record_of_port();
        return View([&](db_handle **db) { return bsp_pon_get_onu_info_web(db, &record); }).text(0, "mac");
    });
    Mac address = parse(mac);
};

TEST_F(Story, OfAnOnuThatIsRejectedAndThenAdmittedAfterAll)
{
    // The ONU has arrived, and nobody knows it.
    EXPECT_EQ(information("state"), "waiting");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_snmp, mac, "pon_port"), "none");

    // The ONU is rejected, and each front end shows it on the blacklist.
    EXPECT_EQ(status_of([&] { return bsp_pon_blacklist_add_onu_auto_id(port, address.data(), "stolen"); }), "0");
    EXPECT_EQ(information("state"), "none");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_snmp, mac, "pon_port"), "3");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_snmp, mac, "text"), "stolen");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_web, mac, "text"), "stolen");

    // While it is on the blacklist, nothing admits it, and the list survives a restart of the service.
    EXPECT_NE(status_of([&] { return bsp_pon_bind_onu_auto_id(port, address.data(), nullptr, nullptr, 0, nullptr); }),
              "0");
    simulator.kill();
    simulator.start();
    EXPECT_EQ(information("state"), "none");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_web, mac, "text"), "stolen");

    // The ONU is taken off the blacklist, and waits again.
    EXPECT_EQ(status_of([&] { return bsp_pon_no_bind_blacklist_onu_by_mac(port, address.data()); }), "0");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_snmp, mac, "pon_port"), "none");
    EXPECT_EQ(cell(bsp_pon_get_onu_blacklist_web, mac, "pon_port"), "none");
    EXPECT_EQ(information("state"), "waiting");

    // The ONU is confirmed.
    EXPECT_EQ(status_of([&] {
                  bsp_pon_msg onu{};
                  std::ranges::copy(address, onu.onu_mac);
                  return bsp_pon_confirm_onu(port, &onu);
              }),
              "0");
    EXPECT_EQ(information("state"), "online");

    // The ONU gets a description.
    const uint32_t id = onu_id();
    EXPECT_EQ(status_of([&] { return bsp_pon_onu_description(port, id, "customer 1207"); }), "0");
    EXPECT_EQ(information("description"), "customer 1207");

    // The ONU raises an alarm. A reboot looks like this from the OLT.
    const auto alarm = [&] { return cell(bsp_pon_get_onu_alarm, mac, "name"); };
    EXPECT_EQ(status_of([] {
                  bsp_pon_msg record = record_of_port();
                  return bsp_pon_clear_onu_alarm(&record);
              }),
              "0");
    EXPECT_EQ(alarm(), "none");
    EXPECT_EQ(status_of([&] {
                  bsp_pon_msg batch = record_of_port();
                  onu_id_set ids{};
                  ids.words[id / 32] = 1u << id % 32;
                  std::memcpy(reinterpret_cast<char *>(&batch) + layout::onu_batch::onu_set.offset, &ids, sizeof ids);
                  return bsp_pon_reboot_onu_batch(&batch);
              }),
              "0");
    EXPECT_EQ(alarm(), "dying_gasp");

    // The alarm is cleared, and the customer is served.
    EXPECT_EQ(status_of([&] {
                  bsp_pon_msg record = record_of_port();
                  record.onu_id = id;
                  return bsp_pon_clear_onu_alarm(&record);
              }),
              "0");
    EXPECT_EQ(alarm(), "none");
    EXPECT_EQ(status_of([] {
                  control("step 40"); // time to boot and register
                  return uint32_t{BSP_OK};
              }),
              "0");
    EXPECT_EQ(information("state"), "online");
    EXPECT_EQ(information("onu_id"), std::to_string(id));
}

} // namespace

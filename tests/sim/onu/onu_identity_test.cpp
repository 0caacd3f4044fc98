// These tests check what ONUs report of themselves, and the tables of that.
#include "views/onu_identity.h"

#include <bit>
#include <set>

#include "model/olt/llid.h"
#include "optics.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr size_t small_result = 10240; // the longest result on the channels of remote ONUs
const Settings everyone{.seed = 1, .ports = 1, .arrivals = 64, .silent = 0};
constexpr uint32_t onu_id = 5;
constexpr uint32_t absent_id = 6; // id of an ONU that has not arrived

const std::pair<uint32_t, uint32_t> told_by_onus[] = {
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP2_GET},    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_SN_GET},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_FW_GET},      {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CHIP_ID_GET},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP_GET},     {BSP_MSG_ONU_INFO, BSP_CMD_ONU_MEM_INFO_GET},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET},   {BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_MAX_PORT_GET},
};

// Returns the first ONU of this model that has arrived.
const Arrival &arrival_of(const Olt &olt, std::string_view model)
{
    for (const Arrival &arrival : olt.port(1)->arrivals)
        if (device_of(olt.seed(), arrival.mac).type->model == model) return arrival;
    throw std::logic_error("none has arrived");
}

Mac mac_of_model(std::string_view model)
{
    return arrival_of(Olt(everyone), model).mac;
}

Change bound(const Mac &mac, Change change = {})
{
    change.put<Binding>({1, onu_id}, binding_of(mac));
    change.put<Binding>({1, absent_id}, binding_of(stranger(6)));
    return change;
}

// In this fixture an ONU of some model is online with its id, and another is offline. More can be kept of the OLT.
struct Online : ServiceFixture {
    const Mac mac;

    explicit Online(std::string_view model, const Change &kept = {})
        : ServiceFixture(everyone, bound(mac_of_model(model), kept)), mac(mac_of_model(model))
    {
    }
    Reply ask(uint32_t channel, uint32_t command, uint32_t id = onu_id, uint32_t pon_port = 1)
    {
        return simulator.handle(message_of(channel, onu_record_of(command, pon_port, id)));
    }
    Arrival arrival() const { return *port(1).arrived(mac); }
    Device device() const { return device_of(everyone.seed, mac); }
};

// Data is the data of an answer.
struct Data {
    std::string bytes;

    Data(Online &fixture, uint32_t channel, uint32_t command, uint32_t id = onu_id)
    {
        const Reply reply = fixture.ask(channel, command, id);
        EXPECT_EQ(reply.status, BSP_OK);
        bytes = reply.answer.value_or(std::string(sizeof(bsp_onu_msg), '?'));
        EXPECT_EQ(bytes.size(), sizeof(bsp_onu_msg));
    }
    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(bytes.data(), at);
    }
    // Returns a part with the NULs that fill it.
    std::string part(uint32_t offset, size_t size) const { return bytes.substr(offset, size); }
    template <class Field>
    std::string text(layout::At<Field> at) const
    {
        return part(at.offset, sizeof(Field)).c_str();
    }
    bool ends_at(uint32_t offset) const { return bytes.find_first_not_of('\0', offset) == std::string::npos; }
};

std::string bytes_of(const Mac &mac)
{
    return {mac.begin(), mac.end()};
}

SettingKey key_of(const Mac &mac, uint32_t command, uint32_t uni = 0)
{
    return {1, mac, command, uni};
}

std::string word_bytes(uint32_t word)
{
    std::string bytes(sizeof word, '\0');
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
}

Change configured(const SettingKey &key, uint32_t word, uint32_t before)
{
    Change change;
    change.put<OnuSetting>(key, {word_bytes(word), word_bytes(before), oam_delay});
    return change;
}

TEST(OnuIdentity, AnOfflineOnuTellsNothing)
{
    Online fixture("H132");
    for (const auto &[channel, command] : told_by_onus)
        EXPECT_EQ(fixture.ask(channel, command, absent_id).status, PON_ERR_OFFLINE) << command;
}

TEST(OnuIdentity, WhatDoesNotExistIsAStatus)
{
    Online fixture("H132");
    for (const auto &[channel, command] : told_by_onus) {
        EXPECT_EQ(fixture.ask(channel, command, onu_id, 2).status, PON_ERR_NO_PORT) << command;
        EXPECT_EQ(fixture.ask(channel, command, 128).status, PON_ERR_BAD_ONU_ID) << command;
        EXPECT_EQ(fixture.ask(channel, command, 77).status, PON_ERR_NOT_BOUND) << command;
    }
    EXPECT_EQ(fixture.ask(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET, 77).status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.ask(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_SNMP, 77).status, PON_ERR_NOT_BOUND);
}

TEST(OnuSn, Is54BytesAsCtcHasThem)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_SN_GET);
    std::string wanted = "SIMBH132" + bytes_of(fixture.mac) + std::string(fixture.device().hardware);
    wanted.resize(22);
    wanted += fixture.device().software;
    wanted.resize(38);
    wanted += "H132-1GE3FE2POTS";
    EXPECT_EQ(data.part(352, 54), wanted);
    EXPECT_TRUE(data.ends_at(352 + 54));
}

TEST(OnuSn, ExtendedModelsFitTheirField)
{
    for (const DeviceType &type : device_types())
        EXPECT_LE(extended_model(type).size(), 16u) << type.model;
}

TEST(OnuFirmware, IsThatOfTheLastUpgrade)
{
    Change upgraded;
    upgraded.put<OnuRecord>({1, mac_of_model("H132")}, {.software = "9.8.7-a.long.one"});
    Online fixture("H132", upgraded);
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_FW_GET).text(layout::At<layout::Text<128>>{352}),
              "9.8.7-a.long.one");
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_SN_GET).part(374, 16), "9.8.7-a.long.one");
}

TEST(OnuChip, Is8BytesAsCtcHasThem)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CHIP_ID_GET);
    EXPECT_EQ(data.part(352, 2), "SY");
    EXPECT_EQ(data.get(layout::At<uint16_t>{354}), 420);
    EXPECT_EQ(data.part(356, 4), "\x02\x21\x06\x18");
    EXPECT_TRUE(data.ends_at(352 + 8));
}

TEST(OnuChip, IsThatOfTheKind)
{
    for (const DeviceType &type : device_types()) {
        Online fixture(type.model);
        const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CHIP_ID_GET);
        EXPECT_EQ(data.part(352, 2) + '-' + std::to_string(data.get(layout::At<uint16_t>{354})), type.chipset);
    }
}

TEST(OnuCapabilities, Are26BytesAsCtcHasThem)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP_GET);
    const uint8_t wanted[26] = {7, 1, 0, 0, 0, 0, 0, 0, 0, 0x01, 3, 0, 0, 0, 0, 0, 0, 0, 0x0e, 2, 0, 8, 8, 32, 8, 0};
    EXPECT_EQ(data.part(352, 26), std::string(std::begin(wanted), std::end(wanted)));
    EXPECT_TRUE(data.ends_at(352 + 26));
}

TEST(OnuCapabilities, BitmapsHaveABitForEachUniPort)
{
    for (const DeviceType &type : device_types()) {
        Online fixture(type.model);
        const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP_GET);
        const uint32_t ge = data.get(byte_of(layout::onu_cap::ge_bitmap, 7));
        const uint32_t fe = data.get(byte_of(layout::onu_cap::fe_bitmap, 7));
        EXPECT_EQ(std::popcount(ge), static_cast<int>(type.ge_ports));
        EXPECT_EQ(ge + fe, (1u << fixture.device().unis.size()) - 1);
    }
}

TEST(OnuCapabilities, BatteryIsToldInBothBlocks)
{
    for (const auto &[model, battery] : {std::pair{"B400", 1u}, std::pair{"S100", 0u}}) {
        Online fixture(model);
        EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP_GET).get(layout::At<uint8_t>{377}), battery);
        EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP2_GET).get(layout::At<uint8_t>{415}), battery);
    }
}

TEST(OnuCapabilities2, Are64BytesWithTheInterfacesOfTheOnu)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP2_GET);
    const uint8_t wanted[23] = {1, 0, 1, 0, 3, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 3, 0, 0, 0, 2, 0, 2};
    EXPECT_EQ(data.get(layout::At<uint32_t>{352}), 1u) << "HGU";
    EXPECT_EQ(data.part(356, sizeof wanted), std::string(std::begin(wanted), std::end(wanted)));
    EXPECT_TRUE(data.ends_at(356 + sizeof wanted));
}

TEST(OnuCapabilities2, AnOnuOfOneKindOfPortsHasOneInterfaceType)
{
    Online fixture("S040");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP2_GET);
    EXPECT_EQ(data.get(layout::At<uint32_t>{352}), 0u) << "SFU";
    EXPECT_EQ(data.part(360, 7), (std::string{1, 0, 0, 0, 1, 0, 4}));
}

TEST(OnuMemory, IsThatOfTheKindAndPartlyFree)
{
    namespace at = layout::onu_mem_info;
    for (const DeviceType &type : device_types()) {
        Online fixture(type.model);
        const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_MEM_INFO_GET);
        EXPECT_EQ(data.get(at::memory_total), hardware_of(type).memory);
        EXPECT_EQ(data.get(at::flash_total), hardware_of(type).flash);
        EXPECT_GT(data.get(at::memory_free), 0u);
        EXPECT_LT(data.get(at::memory_free), data.get(at::memory_total));
        EXPECT_GT(data.get(at::flash_free), 0u);
        EXPECT_LT(data.get(at::flash_free), data.get(at::flash_total));
    }
}

TEST(OnuMemory, WhatIsFreeLastsFiveSeconds)
{
    Online fixture("H132");
    const auto free = [&fixture] {
        return Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_MEM_INFO_GET).get(layout::onu_mem_info::memory_free);
    };
    const uint32_t first = free();
    pass(fixture, 4999);
    EXPECT_EQ(free(), first);
    pass(fixture, 1);
    EXPECT_NE(free(), first);
}

TEST(OnuDeviceInfo, SaysWhatTheOnuIs)
{
    namespace at = layout::onu_device_info;
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET);
    EXPECT_EQ(data.part(at::mac.offset, 6), bytes_of(fixture.mac));
    EXPECT_EQ(data.part(at::onu_type.offset, 5), (std::string{1, 1, 3, 2, 0}));
    EXPECT_EQ(data.get(at::memory_total), 128u * 1024);
    EXPECT_EQ(data.get(at::flash_total), 32u * 1024);
    EXPECT_EQ(data.get(at::chip_revision), 2u);
    EXPECT_EQ(data.part(at::vendor.offset, 24), "SIMBH132H132-1GE3FE2POTS");
    EXPECT_EQ(data.text(at::hardware), fixture.device().hardware);
    EXPECT_EQ(data.text(at::software), fixture.device().software);
    EXPECT_EQ(data.text(at::chipset), "SY-420");
    EXPECT_TRUE(data.ends_at(452));
}

TEST(OnuDeviceInfo, TheSerialNumberIsVendorAndAddress)
{
    EXPECT_EQ(serial_number("SIMA", {0x02, 0x1e, 0x61, 0x97, 0x0a, 0xff}), "SIMA61970AFF");
}

TEST(OnuDeviceInfo, TheProcessorIsNeverIdleNorFullyLoaded)
{
    Online fixture("S100");
    std::set<uint32_t> loads;
    for (int slice = 0; slice < 20; ++slice) {
        const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET);
        loads.insert(data.get(layout::onu_device_info::cpu_load));
        pass(fixture, 5 * ms_per_second);
    }
    EXPECT_GT(loads.size(), 5u);
    EXPECT_GT(*loads.begin(), 0u);
    EXPECT_LT(*loads.rbegin(), 100u);
}

TEST(OnuDeviceInfo, TheTemperatureIsThatOfTheTransceiver)
{
    Online fixture("S100");
    const auto fine = Data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET).get(layout::onu_optics::temperature);
    const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET);
    EXPECT_NEAR(data.get(layout::onu_device_info::temperature) / 100.0, fine / 256.0, 0.005);
}

TEST(OnuLlids, TheOnuHasOneUntilItIsToldOtherwise)
{
    Online fixture("S100");
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET).get(layout::onu_device_info::llids), 1u);
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET).get(layout::onu_about::llids), 1u);
}

TEST(OnuLlids, TheOltHasTheNewNumberBeforeTheOnu)
{
    Online fixture("S100", configured(key_of(mac_of_model("S100"), BSP_CMD_ONU_MULTI_LLID_SET), 4, 1));
    const auto of_onu = [&fixture] {
        return Data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET).get(layout::onu_device_info::llids);
    };
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET).get(layout::onu_about::llids), 4u);
    EXPECT_EQ(of_onu(), 1u);
    pass(fixture, oam_delay);
    EXPECT_EQ(of_onu(), 4u);
}

TEST(OnuAbout, SaysWhereTheOnuIsAndWhatItIs)
{
    namespace at = layout::onu_about;
    Change rebooted;
    rebooted.put<OnuRecord>({1, mac_of_model("H132")}, {.reboots = 3});
    Online fixture("H132", rebooted);
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET);
    EXPECT_EQ(data.part(at::mac.offset, 6), bytes_of(fixture.mac));
    EXPECT_EQ(data.get(at::onu_id), onu_id);
    EXPECT_EQ(data.get(at::state), 1u);
    EXPECT_EQ(data.get(at::pon_port), 1u);
    EXPECT_EQ(data.get(at::llid), to_llid(onu_id));
    EXPECT_EQ(data.get(at::distance), fixture.arrival().distance);
    EXPECT_EQ(data.get(at::reboots), 3u);
    EXPECT_EQ(data.part(at::vendor.offset, 24), "SIMBH132H132-1GE3FE2POTS");
    EXPECT_EQ(data.text(at::software), fixture.device().software);
    EXPECT_EQ(data.part(at::ge_ports.offset, 4), (std::string{1, 3, 2, 0}));
}

TEST(OnuAbout, ThePowerReceivedIsThatOfTheRssiReading)
{
    Online fixture("H132");
    EXPECT_EQ(Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET).get(layout::onu_about::received_power),
              rssi(fixture, 1, onu_id).get(layout::optics_rssi::received_power));
}

TEST(OnuAbout, OfAnOfflineOnuThereIsNoDistancePowerOrLink)
{
    namespace at = layout::onu_about;
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET, absent_id);
    EXPECT_EQ(data.get(at::state), 0u);
    EXPECT_EQ(data.get(at::distance), 0u);
    EXPECT_EQ(data.get(at::received_power), -4000);
    EXPECT_EQ(data.get(at::unis_up), 0u);
    EXPECT_EQ(data.text(at::vendor), device_of(everyone.seed, stranger(6)).type->vendor);
}

TEST(OnuAbout, AnOnuThatIsTurnedAwayStillHasADistance)
{
    Change loid_only;
    loid_only.put<PortRecord>(1, {{}, static_cast<uint32_t>(AuthMode::loid)});
    Online fixture("H132", loid_only);
    const Data data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET);
    EXPECT_EQ(data.get(layout::onu_about::state), 2u);
    EXPECT_EQ(data.get(layout::onu_about::distance), fixture.arrival().distance);
}

TEST(OnuMaxPort, StandsInPlaceOfTheUniPort)
{
    for (const auto &[model, unis] : {std::pair{"S100", 1u}, {"E020", 2u}, {"H132", 4u}}) {
        Online fixture(model);
        const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_MAX_PORT_GET);
        EXPECT_EQ(data.get(layout::At<uint8_t>{8}), unis);
        EXPECT_TRUE(data.ends_at(352));
    }
}

TEST(OnuOptics, TheLaunchPowerIsThatOfTheRssiReading)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET);
    EXPECT_EQ(centi_dbm(data.get(layout::onu_optics::launch_power)),
              rssi(fixture, 1, onu_id).get(layout::optics_rssi::onu_launch_power));
}

TEST(OnuOptics, LessIsLostOnTheWayDownThanUp)
{
    Online fixture("H132");
    const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET);
    const PlatAnswer there = rssi(fixture, 1, onu_id);
    const int32_t lost =
        there.get(layout::optics_rssi::launch_power) - centi_dbm(data.get(layout::onu_optics::received_power));
    const auto difference = there.get(layout::optics_rssi::loss) - lost;
    EXPECT_NEAR(difference, static_cast<int32_t>(fixture.arrival().distance) / 100, 2) << "0.1 dB per km";
}

TEST(OnuOptics, ItIsWarmerAtNoonAndNeedsMoreBias)
{
    namespace at = layout::onu_optics;
    Online fixture("H132");
    const Data night(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET);
    pass(fixture, 12 * hours);
    const Data noon(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET);
    EXPECT_EQ(noon.get(at::temperature) - night.get(at::temperature), 8 * 256);
    EXPECT_EQ(noon.get(at::bias) - night.get(at::bias), 400);
    EXPECT_EQ(noon.get(at::voltage), night.get(at::voltage));
}

TEST(OnuOptics, ReadingsAreThoseOfATransceiver)
{
    namespace at = layout::onu_optics;
    for (const DeviceType &type : device_types()) {
        Online fixture(type.model);
        const Data data(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET);
        EXPECT_NEAR(data.get(at::temperature) / 256.0, 41, 6);
        EXPECT_NEAR(data.get(at::voltage) / 10000.0, 3.3, 0.03);
        EXPECT_NEAR(data.get(at::bias) * 0.002, 13, 3);
        EXPECT_TRUE(data.ends_at(352 + 10));
    }
}

rapidjson::Document uni_rows(Online &fixture, uint32_t id = onu_id)
{
    return parse(fixture.ask(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_SNMP, id).result.value_or("no table"));
}

TEST(OnuUnis, HaveARowEach)
{
    Online fixture("H132");
    const std::vector<UniConfig> configs = default_configs(everyone.seed, fixture.mac, fixture.device());
    const rapidjson::Document rows = uni_rows(fixture);
    ASSERT_EQ(rows.Size(), 4u);
    for (uint32_t index = 0; index < 4; ++index) {
        const auto link = link_of(fixture.device().unis[index], configs[index]);
        EXPECT_EQ(rows[index]["uni"].GetUint(), index + 1);
        EXPECT_STREQ(rows[index]["kind"].GetString(), index == 0 ? "GE" : "FE");
        EXPECT_EQ(rows[index]["line_rate"].GetUint(), index == 0 ? 1000u : 100u);
        EXPECT_EQ(rows[index]["admin"].GetBool(), configs[index].enabled);
        EXPECT_EQ(rows[index]["autoneg"].GetBool(), configs[index].autoneg);
        EXPECT_EQ(rows[index]["link"].GetString(), link ? to_text(*link) : "down");
    }
}

TEST(OnuUnis, LinksOfAnOfflineOnuAreUnknown)
{
    Online fixture("H132");
    const rapidjson::Document rows = uni_rows(fixture, absent_id);
    ASSERT_EQ(rows.Size(), device_of(everyone.seed, stranger(6)).unis.size());
    for (const auto &row : rows.GetArray())
        EXPECT_TRUE(row["link"].IsNull());
}

// Returns a UNI port of the first H132 that has a link.
uint32_t uni_with_link()
{
    const Mac mac = mac_of_model("H132");
    const Device device = device_of(everyone.seed, mac);
    const std::vector<UniConfig> configs = default_configs(everyone.seed, mac, device);
    uint32_t uni = 1;
    while (!link_of(device.unis.at(uni - 1), configs[uni - 1]))
        ++uni;
    return uni;
}

TEST(OnuUnis, APortThatIsToldSoIsDisabledAndDownOnceTheOnuHasThat)
{
    const uint32_t uni = uni_with_link();
    Online fixture("H132", configured(key_of(mac_of_model("H132"), BSP_CMD_ONU_ADMIN_STATE_GET, uni), 0, 1));
    const auto up = [&fixture] {
        return Data(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET).get(layout::onu_about::unis_up);
    };
    const uint32_t links = up();
    EXPECT_TRUE(uni_rows(fixture)[uni - 1]["admin"].GetBool());
    pass(fixture, oam_delay);
    EXPECT_FALSE(uni_rows(fixture)[uni - 1]["admin"].GetBool());
    EXPECT_STREQ(uni_rows(fixture)[uni - 1]["link"].GetString(), "down");
    EXPECT_EQ(up(), links - 1);
}

TEST(OnuUnis, WhetherAPortNegotiatesIsWhatTheOnuWasTold)
{
    Online fixture("H132", configured(key_of(mac_of_model("H132"), BSP_CMD_ONU_AUTONEG_GET, 2), 0, 1));
    EXPECT_TRUE(uni_rows(fixture)[1]["autoneg"].GetBool());
    pass(fixture, oam_delay);
    EXPECT_FALSE(uni_rows(fixture)[1]["autoneg"].GetBool());
}

TEST(OnuUnis, APortThatLoopDetectionHasShutIsDown)
{
    const uint32_t uni = uni_with_link();
    Change shut;
    shut.put<LoopRecord>({1, mac_of_model("H132"), uni}, {.looped = true, .shut = true});
    Online fixture("H132", shut);
    EXPECT_TRUE(uni_rows(fixture)[uni - 1]["shut"].GetBool());
    EXPECT_STREQ(uni_rows(fixture)[uni - 1]["link"].GetString(), "down");
    EXPECT_TRUE(uni_rows(fixture)[uni - 1]["admin"].GetBool());
}

TEST(OnuUnis, TheLongestTableStaysWithin10240)
{
    const std::vector<OnuUni> unis(2 * max_unis, OnuUni{1000, false, false, false, LinkMode{1000, true}});
    EXPECT_LE(onu_unis_table(unis, true).size(), small_result);
}

rapidjson::Document serial_rows(Online &fixture)
{
    return parse(fixture.ask(BSP_MSG_ONU_OAM, BSP_CMD_VIEW_ONU_SN, 0).result.value_or("no table"));
}

TEST(OnuSerialNumbers, OfAPortAreThoseOfItsOnusInOrderOfId)
{
    Online fixture("H132");
    const rapidjson::Document rows = serial_rows(fixture);
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows[0]["id"].GetUint(), onu_id);
    EXPECT_EQ(rows[0]["mac"].GetString(), text::mac_text(fixture.mac));
    EXPECT_STREQ(rows[0]["dev"].GetString(), "SIMB H132");
    EXPECT_EQ(rows[0]["sw"].GetString(), fixture.device().software);
    EXPECT_EQ(rows[1]["id"].GetUint(), absent_id);
}

TEST(OnuSerialNumbers, AnOfflineOnuTellsNoDevice)
{
    Online fixture("H132");
    const rapidjson::Document rows = serial_rows(fixture);
    EXPECT_EQ(rows[1]["mac"].GetString(), text::mac_text(stranger(6)));
    EXPECT_TRUE(rows[1]["dev"].IsNull() && rows[1]["sw"].IsNull());
}

TEST(OnuSerialNumbers, NeedAPort)
{
    Online fixture("H132");
    EXPECT_EQ(fixture.ask(BSP_MSG_ONU_OAM, BSP_CMD_VIEW_ONU_SN, 0, 2).status, PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.ask(BSP_MSG_ONU_OAM, BSP_CMD_VIEW_ONU_SN, 0, 0).status, PON_ERR_NO_PORT);
}

TEST(OnuSerialNumbers, OfAFullPortStayWithin10240)
{
    constexpr DeviceType longest_type{.vendor = "AAAA",
                                      .model = "BBBB",
                                      .chipset = {},
                                      .ge_ports = 4,
                                      .fe_ports = 4,
                                      .pots_ports = 0,
                                      .us_queues = 0,
                                      .fec = false,
                                      .battery = false,
                                      .igmp_snooping = false,
                                      .multicast_control = false,
                                      .fast_leave = false,
                                      .vlan_translation = false,
                                      .vlan_trunk = false};
    const Olt olt(everyone);
    const Binding binding = binding_of(stranger(1));
    const Device device{&longest_type, "HHHHHHHH", "SSSSSSSSSSSSSSSS", {}};
    const RemoteOnu longest{olt.port(1), 127, &binding, OnuState::online, device};
    const std::string table = onu_serial_numbers_table(std::vector<RemoteOnu>(onus_per_port, longest));
    EXPECT_EQ(parse(table).Size(), onus_per_port);
    EXPECT_LT(table.size(), small_result);
}

} // namespace
} // namespace ponsim

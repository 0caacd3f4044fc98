// These tests check the tables in the answers of views.
#include <cstring>
#include <fstream>
#include <sstream>

#include "catalogue.h"
#include "model/onu/gateway.h"
#include "model/plant/station.h"
#include "model/port/loops.h"
#include "plat.h"
#include "profiles.h"
#include "rows.h"
#include "store/digest.h"
#include "upgrade.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Returns the result of any view, asked for with id 5 of port 1 and UNI port 1.
std::string result_of(ProfileFixture &fixture, const catalogue::Command &command)
{
    const uint32_t channel = command.channel->type;
    if (channel == BSP_MSG_PROFILE) return fixture.file(command.code);
    if (channel == BSP_MSG_PON) {
        const Reply reply = fixture.ask(record_of(command.code, 1), command.call.value_or(catalogue::Call::get));
        return reply.file ? reply.file->content : reply.result.value_or("no result");
    }
    if (command.channel->record->size == sizeof(bsp_plat_msg))
        return PlatAnswer(fixture, channel, {command.code, 1, 5}).reply.result.value_or("no result");
    if (command.channel->record->size == sizeof(bsp_pon_msg_ext)) {
        bsp_pon_msg_ext record{};
        record.cmd = command.code;
        return fixture.simulator.handle({channel, &record, sizeof record}).result.value_or("no result");
    }
    bsp_onu_msg record = onu_record_of(command.code, 1, 5);
    record.onu_uni_port = 1;
    return fixture.simulator.handle(message_of(channel, record)).result.value_or("no result");
}

bool has_type(const rapidjson::Value &value, const catalogue::Column &column)
{
    using catalogue::ColumnType;
    const ColumnType type = column.type;
    if (value.IsNull()) return column.nullable;
    if (type == ColumnType::u32) return value.IsUint();
    if (type == ColumnType::u64) return value.IsUint64();
    if (type == ColumnType::boolean) return value.IsBool();
    if (type == ColumnType::real) return value.IsNumber();
    if (type == ColumnType::mac) return value.IsString() && value.GetStringLength() == 17;
    return value.IsString();
}

const Settings crowded{.seed = 1, .ports = 16, .arrivals = 128, .silent = 0};

// This fills a whole OLT: every id of every port is bound, every ONU of the population waits, and all values are as
// long as they can be.
Change all_of_it()
{
    Change kept;
    const Olt olt(crowded);
    const OnuRecord record{.supported = false, .reboots = 0xffffffff};
    for (const PonPort &port : olt.ports()) {
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
            const Mac mac = stranger(static_cast<uint8_t>(onu_id), static_cast<uint8_t>(port.number));
            kept.put<Binding>({port.number, onu_id}, Binding{.mac = mac,
                                                             .mode = 0xffffffff,
                                                             .text_a = std::string(127, '"'),
                                                             .text_b = std::string(63, '\\'),
                                                             .text_c = std::string(63, '"'),
                                                             .description = std::string(127, '"')});
            kept.put<OnuRecord>({port.number, mac}, record);
        }
        for (const Arrival &arrival : port.arrivals)
            kept.put<OnuRecord>({port.number, arrival.mac}, record);
    }
    return kept;
}

// Binds to id 5 of port 1 an ONU that has rows in all tables of its user services.
Mac bind_with_everything(ServiceFixture &fixture)
{
    for (size_t index = 2; index < fixture.port(1).arrivals.size(); ++index) {
        const Mac mac = fixture.port(1).arrivals[index].mac;
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, mac));
        const UserServices services =
            user_services(fixture.simulator.olt(), find_onu(fixture.simulator.olt(), 1, 5).onu);
        if (services.catv && !services.acl.empty()) return mac;
        fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5));
    }
    return {};
}

// Makes UNI port 1 of id 5 translate a multicast VLAN.
void translate_multicast(ServiceFixture &fixture)
{
    namespace block = layout::onu_mc_vlan_mode_set;
    bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_MC_VLAN_MODE_SET, 1, 5);
    record.onu_uni_port = 1;
    OnuBlock data(34);
    data.put(block::mode, 2);
    data.put(block::number, 1);
    data.put(block::mc_vlan[0], 100);
    data.put(block::user_vlan[0], 200);
    data.bytes().copy(reinterpret_cast<char *>(record.onu_data), data.bytes().size());
    Message message = message_of(BSP_MSG_ONU_CFG, record);
    message.call = catalogue::Call::set;
    EXPECT_EQ(fixture.simulator.handle(message).status, BSP_OK);
}

void set_uni_profile(ServiceFixture &fixture)
{
    namespace block = layout::uni_profile;
    bsp_pon_msg record = record_of(BSP_CMD_UNI_PROFILE_SET, 1);
    record.arg_value = 1;
    put(record, block::pvid, 1);
    put(record, block::tpid, 0x8100);
    EXPECT_EQ(fixture.send(record), BSP_OK);
}

const WantedSettings full{.seed = 1, .ports = 16, .arrivals = 128, .silent = 0};

// Uses the OLT so that no view is without rows.
void use(ProfileFixture &fixture)
{
    const Mac mac = bind_with_everything(fixture);
    fixture.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, fixture.port(1).arrivals[0].mac));
    bsp_pon_msg authentication = record_of(BSP_CMD_AUTH_SET, 1);
    std::strcpy(authentication.text45, "loid");
    fixture.send(authentication);
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 6, fixture.port(1).arrivals[1].mac));
    PlatAnswer(
        fixture, BSP_MSG_PLAT,
        PlatRecord(BSP_CMD_P2P_ENTRY_SET, 1).put(layout::p2p_entry::action, 1).put(layout::p2p_entry::to_port, 1));
    fixture.simulator.advance(longest_silence);
    add_type(fixture, "type", "SIMA", "S100", "2.0", 1);
    translate_multicast(fixture);
    set_uni_profile(fixture);
    for (const uint32_t kind : all_kinds)
        EXPECT_EQ(fixture.keep(kind, "profile", words_of_kind(kind)), BSP_OK);
    fixture.simulator.change(set_loop(fixture.simulator.olt(), {1, mac, 1}, true).change);
}

TEST(Views, HaveTheColumnsOfTheCatalogueInOrder)
{
    ProfileFixture fixture(full);
    use(fixture);
    for (const catalogue::View &view : catalogue::views())
        for (const catalogue::Command *command : view.commands) {
            SCOPED_TRACE(command->name);
            const rapidjson::Document rows = parse(result_of(fixture, *command));
            ASSERT_GT(rows.Size(), 0u) << command->name;
            for (const auto &row : rows.GetArray()) {
                ASSERT_EQ(row.MemberCount(), view.columns.size());
                auto column = view.columns.begin();
                for (const auto &cell : row.GetObject()) {
                    EXPECT_EQ(cell.name.GetString(), column->name);
                    EXPECT_TRUE(has_type(cell.value, *column)) << column->name;
                    ++column;
                }
            }
        }
}

// The file has the length and the digest of each view's text, for two OLTs. When a text is meant to change, replace the
// file by view_texts.actual.
TEST(Views, HaveTheTextsThatTheyAlwaysHad)
{
    std::string actual;
    const auto add_texts = [&actual](const std::string &what, ProfileFixture &fixture) {
        for (const catalogue::View &view : catalogue::views())
            for (const catalogue::Command *command : view.commands) {
                const std::string text = result_of(fixture, *command);
                actual += what + ' ' + std::string(view.name) + ' ' + std::string(command->name) + ' ' +
                          std::to_string(text.size()) + ' ' + digest(text) + '\n';
            }
    };
    ProfileFixture busy(full);
    use(busy);
    add_texts("busy", busy);
    ProfileFixture crowd(crowded, all_of_it());
    add_texts("crowded", crowd);
    std::ostringstream expected;
    expected << std::ifstream(GOLDEN "/view_texts.txt").rdbuf();
    std::ofstream("view_texts.actual") << actual;
    EXPECT_EQ(actual, expected.str());
}

TEST(OnuInfo, ShowsABoundOnu)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0});
    const Arrival &arrival = fixture.simulator.olt().port(1)->arrivals[0];
    bsp_pon_msg record = record_of(BSP_CMD_ONU_BIND, 1, 5, arrival.mac);
    record.arg_value = 3;
    strcpy(record.text237, "a");
    strcpy(record.text173, "b");
    strcpy(record.text365, "\"c\"");
    fixture.send(record);
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1),
              R"([{"pon_port":1,"onu_id":5,"mac":")" + text::mac_text(arrival.mac) +
                  R"(","state":"online","supported":true,"distance":)" + std::to_string(arrival.distance) +
                  R"(,"mode":3,"text_a":"a","text_b":"b","text_c":"\"c\"","reboots":0,"description":"","loid":")" +
                  arrival.loid + R"("}])");
}

TEST(OnuInfo, ShowsAWaitingOnu)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0});
    const Arrival &arrival = fixture.simulator.olt().port(1)->arrivals[0];
    fixture.send(record_of(BSP_CMD_ONU_SUPPORT_SET, 1, 0, arrival.mac));
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1),
              R"([{"pon_port":1,"onu_id":null,"mac":")" + text::mac_text(arrival.mac) +
                  R"(","state":"waiting","supported":false,"distance":)" + std::to_string(arrival.distance) +
                  R"(,"mode":null,"text_a":null,"text_b":null,"text_c":null,"reboots":0,"description":null,"loid":")" +
                  arrival.loid + R"("}])");
}

TEST(OnuInfo, AnOfflineOnuHasNoDistance)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 0, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["state"].GetString(), "offline");
    EXPECT_TRUE(rows[0]["distance"].IsNull());
}

TEST(OnuInfo, BoundOnesComeFirstAndAllAreInOrder)
{
    ServiceFixture fixture({.seed = 1, .ports = 2, .arrivals = 3, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 1, stranger(1)));
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 9, stranger(2)));
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 0, stranger(3)));
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP));
    std::vector<std::string> macs,
        wanted{text::mac_text(stranger(3)), text::mac_text(stranger(2)), text::mac_text(stranger(1))};
    for (const auto &row : rows.GetArray())
        macs.push_back(row["mac"].GetString());
    for (const PonPort &port : fixture.simulator.olt().ports())
        for (const Arrival &arrival : port.arrivals)
            wanted.push_back(text::mac_text(arrival.mac));
    EXPECT_EQ(macs, wanted);
}

TEST(OnuInfo, TheWebViewShowsOnePortOrForPort0All)
{
    ServiceFixture fixture({.seed = 1, .ports = 3, .arrivals = 5, .silent = 0});
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 2));
    ASSERT_EQ(rows.Size(), 5u);
    for (const auto &row : rows.GetArray())
        EXPECT_EQ(row["pon_port"].GetUint(), 2u);
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 0), fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP));
}

TEST(OnuInfo, APortThatDoesNotExistIsSaid)
{
    ServiceFixture fixture;
    const Reply reply = fixture.simulator.handle(message_of(record_of(BSP_CMD_VIEW_ONU_INFO_WEB, 17)));
    EXPECT_EQ(reply.status, PON_ERR_NO_PORT);
    EXPECT_EQ(reply.result, std::nullopt);
}

TEST(OnuInfo, AnOltOf4096OnusFitsByLeavingAllTextsOut)
{
    ServiceFixture fixture(crowded, all_of_it());
    const std::string text = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
    EXPECT_LE(text.size(), max_result);
    const rapidjson::Document rows = parse(text);
    EXPECT_EQ(rows.Size(), 4096u);
    for (const auto &row : rows.GetArray())
        for (const char *name : {"text_a", "text_b", "text_c", "description"})
            EXPECT_TRUE(row[name].IsNull());
}

TEST(OnuInfo, OnePortAlwaysHasItsTexts)
{
    ServiceFixture fixture(crowded, all_of_it());
    const std::string text = fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 16);
    EXPECT_LE(text.size(), max_result);
    const rapidjson::Document rows = parse(text);
    EXPECT_EQ(rows.Size(), 256u);
    EXPECT_EQ(rows[0]["text_a"].GetString(), std::string(127, '"'));
    EXPECT_EQ(rows[0]["description"].GetString(), std::string(127, '"'));
}

TEST(BaseInfo, CountsThePorts)
{
    ServiceFixture fixture({.seed = 1, .ports = 2, .arrivals = 4, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 1, stranger(1)));
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 2, fixture.simulator.olt().port(2)->arrivals[0].mac));
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_BASE_INFO_WEB),
              R"([{"pon_port":1,"bound":0,"online":0,"waiting":4,"min_distance":0,"max_distance":20000},)"
              R"({"pon_port":2,"bound":2,"online":1,"waiting":3,"min_distance":0,"max_distance":20000}])");
}

TEST(BaseInfo, ShowsOnePortWhereOneIsAskedFor)
{
    ServiceFixture fixture({.seed = 1, .ports = 2, .arrivals = 4, .silent = 0});
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_BASE_INFO_WEB, 2),
              R"([{"pon_port":2,"bound":0,"online":0,"waiting":4,"min_distance":0,"max_distance":20000}])");
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_VIEW_BASE_INFO_WEB, 3)), PON_ERR_NO_PORT);
}

TEST(Determinism, TheSameRequestsGiveTheSameBytes)
{
    const auto run = [] {
        ServiceFixture fixture({.seed = 42, .ports = {}, .arrivals = 20, .silent = 30});
        std::string bytes;
        for (uint8_t index = 0; index < 60; ++index) {
            const uint32_t pon_port = index % 16 + 1;
            const Mac mac = fixture.simulator.olt().port(pon_port)->arrivals[index % 20].mac;
            bytes += std::to_string(fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, pon_port, 0, mac))) + " ";
            if (index % 5 == 0) fixture.send(record_of(BSP_CMD_ONU_RELEASE_OFFLINE, pon_port));
            bytes += fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, pon_port);
        }
        return bytes;
    };
    EXPECT_EQ(run(), run());
}

TEST(Table, WritesItsRowsInOrderWithNullWhereThereIsNothing)
{
    Table<view::onu_catv_table> table;
    table.add({.pon_port = 1, .onu_id = 5, .on = true, .input = -7.5});
    table.add({.pon_port = 2, .onu_id = 6, .on = false, .input = std::nullopt});
    EXPECT_EQ(table.text(), R"([{"pon_port":1,"onu_id":5,"on":true,"input":-7.5},)"
                            R"({"pon_port":2,"onu_id":6,"on":false,"input":null}])");
}

TEST(Table, WithoutRowsIsEmpty)
{
    EXPECT_EQ(Table<view::onu_catv_table>().text(), "[]");
}

} // namespace
} // namespace ponsim

// The tests of upgrades share these requests.
#pragma once

#include <string>

#include "model/lifecycle/upgrade.h"
#include "support.h"

namespace ponsim
{

struct UpgradeRecord {
    bsp_pon_msg_ext record{};

    explicit UpgradeRecord(uint32_t command) { record.cmd = command; }
    template <class Field, class Value>
    UpgradeRecord &put(layout::At<Field> at, const Value &value)
    {
        layout::store(reinterpret_cast<char *>(&record), at, value);
        return *this;
    }
};

inline Reply ask(ServiceFixture &fixture, const UpgradeRecord &request)
{
    return fixture.simulator.handle({BSP_MSG_UPGRADE, &request.record, sizeof request.record});
}

inline uint32_t add_type(ServiceFixture &fixture, const std::string &name, const std::string &vendor,
                         const std::string &model, const std::string &version, uint32_t size,
                         const std::string &file = {})
{
    namespace at = layout::upgrade_type;
    UpgradeRecord record(BSP_CMD_UPGRADE_TYPE_ADD);
    record.put(at::name, name).put(at::vendor, vendor).put(at::model, model).put(at::version, version);
    return ask(fixture, record.put(at::size, size).put(at::file, file)).status;
}

inline uint32_t add_type(ServiceFixture &fixture, const std::string &name, const DeviceType &kind,
                         const std::string &version, uint32_t size)
{
    return add_type(fixture, name, std::string(kind.vendor), std::string(kind.model), version, size);
}

inline uint32_t delete_type(ServiceFixture &fixture, const std::string &name)
{
    return ask(fixture, UpgradeRecord(BSP_CMD_UPGRADE_TYPE_DELETE).put(layout::upgrade_type_name::name, name)).status;
}

inline Reply load_types(ServiceFixture &fixture, const std::string &file)
{
    return ask(fixture, UpgradeRecord(BSP_CMD_UPGRADE_TYPE_LOAD).put(layout::upgrade_type_file::file, file));
}

inline uint32_t bind_to_onus(ServiceFixture &fixture, uint32_t pon_port, const OnuIds &onu_ids, const std::string &name)
{
    namespace at = layout::upgrade_bind_onus;
    UpgradeRecord record(BSP_CMD_UPGRADE_TYPE_BIND_ONUS);
    return ask(fixture, record.put(at::pon_port, pon_port).put(at::name, name).put(at::onu_set, words_of(onu_ids)))
        .status;
}

inline uint32_t bind_to_port(ServiceFixture &fixture, uint32_t pon_port, const std::string &name)
{
    namespace at = layout::upgrade_bind_port;
    UpgradeRecord record(BSP_CMD_UPGRADE_TYPE_BIND_PORT);
    return ask(fixture, record.put(at::pon_port, pon_port).put(at::name, name)).status;
}

inline uint32_t upgrade_one(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id)
{
    namespace at = layout::upgrade_onu;
    return ask(fixture, UpgradeRecord(BSP_CMD_UPGRADE_ONU).put(at::pon_port, pon_port).put(at::onu_id, onu_id)).status;
}

inline uint32_t upgrade_all(ServiceFixture &fixture, uint32_t pon_port)
{
    return ask(fixture, UpgradeRecord(BSP_CMD_UPGRADE_PORT).put(layout::upgrade_port::pon_port, pon_port)).status;
}

} // namespace ponsim

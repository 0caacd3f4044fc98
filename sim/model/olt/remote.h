// This file describes ONUs behind their OAM links: which settings they were sent, and which of these they have by now.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "model/change/plan.h"
#include "model/olt/olt.h"
#include "model/plant/device.h"
#include "place.h"

namespace ponsim
{

// An ONU has a setting this long after it was sent. The OLT can have several such messages on their way at a time.
inline constexpr ModelTime oam_delay = 200; // ms

// There are two queries of a setting: one asks for what the ONU has, the other for what the OLT has sent to it.
enum class Side : uint8_t { remote, local };

// A RemoteOnu is a bound ONU.
struct RemoteOnu {
    const PonPort *port;
    uint32_t onu_id;
    const Binding *binding;
    OnuState state;
    Device device;

    bool online() const { return state == OnuState::online; }
    bool has_uni(uint32_t uni) const { return uni >= 1 && uni <= device.unis.size(); }
    SettingKey key(uint32_t command, uint32_t uni = 0) const { return {port->number, binding->mac, command, uni}; }
};

// `status` is BSP_OK when an ONU is bound to the id.
struct FoundOnu {
    uint32_t status;
    RemoteOnu onu = {};
};
FoundOnu find_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// Returns the ONUs bound at a port, in the order of their ids.
std::vector<RemoteOnu> onus_of(const Olt &olt, const PonPort &port);

// An OnuBlock is a part of a record's data. Its fields are found by the offsets of the layouts, which count from the
// start of the whole record.
class OnuBlock
{
public:
    // Makes a block of zeros.
    explicit OnuBlock(size_t size) : content(size, '\0') {}
    explicit OnuBlock(std::string bytes) : content(std::move(bytes)) {}

    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(content.data(), inside(at));
    }
    // Writes a value. A text is cut to the size of its field and followed by zeros. Throws std::logic_error when a
    // number does not fit.
    template <class Field, class Value>
    void put(layout::At<Field> at, const Value &value)
    {
        if constexpr (layout::is_text<Field>) {
            Field text{};
            std::string_view(value).copy(text.data(), text.size());
            layout::store(content.data(), inside(at), std::string_view(text.data(), text.size()));
        } else {
            layout::store(content.data(), inside(at), value);
        }
    }

    const std::string &bytes() const { return content; }

    bool operator==(const OnuBlock &) const = default;

private:
    static constexpr uint32_t start = 352; // offset of the data in a record

    // Returns where the field is in the block. Throws std::out_of_range when the block is shorter.
    template <class Field>
    layout::At<Field> inside(layout::At<Field> at) const
    {
        static_cast<void>(content.at(at.end() - start - 1));
        return {at.offset - start};
    }

    std::string content;
};

// Returns what one side has of a setting. Until the setting is changed, that is `otherwise`.
OnuBlock setting_of(const Olt &olt, const SettingKey &key, Side side, const OnuBlock &otherwise);

// Returns whether the ONU's CATV port and its performance monitoring are on. One request of one byte switches both,
// because nothing in it says which of the two is meant.
bool switched_on(const Olt &olt, const RemoteOnu &onu, Side side);
// Returns the time since which the ONU monitors: since it has them on, or since its last restart. Returns no time when
// they are off.
std::optional<ModelTime> on_since(const Olt &olt, const RemoteOnu &onu);
// ONUs for homes have a CATV port. They are the ones that have telephone ports, too.
inline bool has_catv(const Device &device)
{
    return device.type->pots_ports > 0;
}
Plan switch_on(const Olt &olt, const RemoteOnu &onu, bool on);

// Sends a setting to an ONU, which must be online. Nothing changes when the ONU was sent the same before.
Plan send_setting(const Olt &olt, const RemoteOnu &onu, const SettingKey &key, const OnuBlock &block,
                  const OnuBlock &otherwise);

} // namespace ponsim

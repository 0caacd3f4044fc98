// ONUs behind their OAM links: what they were told, and what they have of that by now.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/plant/device.h"
#include "place.h"

namespace ponsim
{

// From when an ONU is told something until it has it. The OLT has several such messages on their way at a time.
inline constexpr ModelTime oam_delay = 200; // ms

// Of a pair of queries: what the ONU has, and what the OLT told it.
enum class Side : uint8_t { remote, local };

// A bound ONU.
struct RemoteOnu {
    const PonPort *port;
    uint32_t onu_id;
    const Binding *binding;
    OnuState state;
    Device device;

    bool online() const { return state == OnuState::online; }
    bool has_uni(uint32_t uni) const { return uni >= 1 && uni <= device.unis.size(); }
    SettingPlace place(uint32_t command, uint32_t uni = 0) const { return {port->number, binding->mac, command, uni}; }
};

// `status` is BSP_OK where an ONU is bound to the id.
struct FoundOnu {
    uint32_t status;
    RemoteOnu onu = {};
};
FoundOnu find_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// The ONUs bound at a port, in order of id.
std::vector<RemoteOnu> onus_of(const Olt &olt, const PonPort &port);

// A part of a record's data, by the places that layouts give: those of the whole record.
class OnuBlock
{
public:
    // Of zeros.
    explicit OnuBlock(size_t size) : content(size, '\0') {}
    explicit OnuBlock(std::string bytes) : content(std::move(bytes)) {}

    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(content.data(), inside(at));
    }
    // A text is cut to what its field has room for, and zeros are behind it. Throws std::logic_error where a number
    // does not fit.
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
    static constexpr uint32_t start = 352; // of the data in a record

    // The place in the block. Throws std::out_of_range where the block is shorter.
    template <class Field>
    layout::At<Field> inside(layout::At<Field> at) const
    {
        static_cast<void>(content.at(at.end() - start - 1));
        return {at.offset - start};
    }

    std::string content;
};

// What one side has of a setting; what it has until it is told otherwise is `otherwise`.
OnuBlock setting_of(const Olt &olt, const SettingPlace &place, Side side, const OnuBlock &otherwise);

// Whether the ONU's CATV port and its performance monitoring are on: one request, of one byte, switches both, because
// nothing in it says which of the two is meant.
bool switched_on(const Olt &olt, const RemoteOnu &onu, Side side);
// Since when the ONU has them on; none while it has not.
std::optional<ModelTime> on_since(const Olt &olt, const RemoteOnu &onu);
// ONUs for homes have a CATV port: those that have telephone ports, too.
inline bool has_catv(const Device &device)
{
    return device.type->pots_ports > 0;
}
Plan switch_on(const Olt &olt, const RemoteOnu &onu, bool on);

// Tells an ONU, which must be online, something. Nothing changes where it was told the same before.
Plan tell(const Olt &olt, const RemoteOnu &onu, const SettingPlace &place, const OnuBlock &block,
          const OnuBlock &otherwise);

} // namespace ponsim

// A binding assigns an ONU to an id of a port.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "model/base/mac.h"
#include "model/kept/family.h"
#include "model/kept/sla.h"

namespace ponsim
{

// An OnuKey says at which port and to which id an ONU is bound.
struct OnuKey {
    uint32_t pon_port;
    uint32_t onu_id;

    auto operator<=>(const OnuKey &) const = default;
};

// A Binding describes an ONU that is bound to an id of a port. Mode, texts and description come from the caller and are
// kept as given.
struct Binding {
    Mac mac;
    uint32_t mode = 0;
    std::string text_a;
    std::string text_b;
    std::string text_c;
    std::string description = {};
    bool exempt = false; // from authentication by LOID
    std::optional<Sla> sla = {};
    std::optional<uint32_t> sla_down = {}; // maximum, kbit/s
    bool p2p = true;                       // whether P2P forwarding applies to it

    bool operator==(const Binding &) const = default;
};

template <>
struct Family<Binding> {
    static constexpr std::string_view table = "binding";
    static constexpr AllColumns configured = all_columns;
    using Key = OnuKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"onu_id", &Key::onu_id, {0, onus_per_port - 1}}};
    // Texts are limited so that they fit into the records that they go out in.
    static constexpr std::tuple value{Column{"mac", &Binding::mac},
                                      Column{"mode", &Binding::mode},
                                      Column{"text_a", &Binding::text_a, {0, 127}},
                                      Column{"text_b", &Binding::text_b, {0, 63}},
                                      Column{"text_c", &Binding::text_c, {0, 63}},
                                      Column{"description", &Binding::description, {0, 127}},
                                      Column{"exempt", &Binding::exempt},
                                      InnerOrNone{&Binding::sla, &Sla::maximum,
                                                  std::tuple{Column{"sla_fixed", &Sla::fixed, {0, line_rate}},
                                                             Column{"sla_assured", &Sla::assured, {0, line_rate}},
                                                             Column{"sla_maximum", &Sla::maximum, {0, line_rate}},
                                                             Column{"sla_priority", &Sla::priority, {0, max_priority}},
                                                             Column{"sla_weight", &Sla::weight, {0, max_weight}}}},
                                      NumberOrNone{"sla_down", &Binding::sla_down, 0, {1, line_rate}},
                                      Column{"p2p", &Binding::p2p}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports * onus_per_port;

    class Check
    {
    public:
        const char *operator()(uint32_t, const Key &, const Binding &binding)
        {
            if (binding.sla && !is_good(*binding.sla)) return "there is no such SLA";
            return bound.insert(binding.mac).second ? nullptr : "the ONU is bound twice";
        }

    private:
        std::set<Mac> bound;
    };
};

} // namespace ponsim

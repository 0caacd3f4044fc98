// ponctl onu why says why an ONU is in its state, and what to check next.
#include <algorithm>

#include "call/invocation.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "commands/onu/search.h"
#include "diagnosis/why.h"
#include "output/consent.h"
#include "output/json.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/sections.h"
#include "text/hex.h"

namespace ponctl
{
namespace
{

// A Case is an ONU whose state is to be explained, with what was asked about it.
class Case
{
public:
    // Finds the ONU. Returns the exit code, and reports what is wrong, when there is none.
    ExitCode find(const std::string &who)
    {
        if (const auto set = set_in_place_of(who)) {
            if (set->all || count_of(set->ids) != 1) throw UsageError("ONU: '" + who + "' is not one ONU, as 1/5");
            return find_bound(set->port, parse_number("ONU", format_idset(set->ids)), who);
        }
        Search search(who);
        const ExitCode code = search.run();
        std::vector<FoundOnu> found = search.found();
        std::erase_if(found, [](const FoundOnu &onu) { return onu.at("mac").empty(); });
        if (found.size() > 1) throw UsageError(several(who, found));
        if (found.size() == 1) return pick(parse_number("PORT", found.front().at("pon_port")), found.front().at("mac"));
        if (code != exit_success) return code;
        return find_rejected(who, search.nothing_found());
    }

    // Asks for the rest of the facts. What the service does not say is left out, and reported.
    ExitCode ask()
    {
        const std::string port = std::to_string(facts.onu.port);
        ExitCode code = exit_success;
        const auto ask_for = [&code](const char *operation, const std::vector<std::string> &words, auto take) {
            const Invocation called(operation, words, consent());
            if (called.good()) take(called);
            code = std::max(code, report(called));
        };
        ask_for("bsp_pon_get_onu_alarm", words_of({{"record.pon_port", port}}),
                [this](const Invocation &called) { facts.alarms = read_alarms(called.database()); });
        ask_for("bsp_pon_get_basic_info", {}, [this](const Invocation &called) {
            double seconds = 0;
            if (db_get_real(called.database(), 0, "uptime", &seconds) == 0)
                facts.now = static_cast<MilliTime>(seconds * 1000);
        });
        ask_for("bsp_sfp_diag_info_get_json", words_of({{"port", port}}),
                [this](const Invocation &called) { facts.limits = read_limits(called.database()); });
        if (!facts.onu.id) return code;
        ask_for("bsp_pon_get_onu_optical_diag_by_pon", words_of({{"pon_port", port}}),
                [this](const Invocation &called) {
                    for (const LightFact &light : read_light(called.database()))
                        if (light.onu_id == *facts.onu.id) facts.light = light;
                });
        // The service refuses this unless the port's last measurement was of this ONU.
        const Invocation measured("bsp_om_plat_diag_rssi_get",
                                  words_of({{"pon_port", port}, {"id", std::to_string(*facts.onu.id)}, {"sel", "1"}}),
                                  consent());
        const auto power = measured.good() ? field_number(measured.block(), "received_power") : std::nullopt;
        if (!power) return code;
        const auto time = field_number(measured.block(), "time");
        facts.last_measured = {*power, time ? std::optional(static_cast<MilliTime>(*time)) : std::nullopt};
        return code;
    }

    const Facts &known() const { return facts; }

private:
    static std::string several(const std::string &who, const std::vector<FoundOnu> &found)
    {
        constexpr size_t most = 10;
        std::string names;
        for (size_t index = 0; index < std::min(found.size(), most); ++index) {
            const FoundOnu &onu = found[index];
            const std::string &id = onu.at("onu_id");
            names += (index ? ", " : "") + onu.at("pon_port") + "/" + (id.empty() ? onu.at("mac") : id);
        }
        return "ONU: " + std::to_string(found.size()) + " ONUs have '" + who + "': " + names +
               (found.size() > most ? " and more" : "") + "; name one";
    }

    // Reads the ONUs of a port.
    ExitCode read_port(uint32_t port)
    {
        const Invocation listed("bsp_pon_exec_get_json_",
                                words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", std::to_string(port)}}),
                                consent());
        if (!listed.good()) return report(listed);
        expect_answer(listed);
        facts.onus = read_onus(listed.database());
        return exit_success;
    }

    ExitCode find_bound(uint32_t port, uint32_t id, const std::string &name)
    {
        if (const ExitCode code = read_port(port); code != exit_success) return code;
        const auto found = std::ranges::find(facts.onus, std::optional(id), &OnuFact::id);
        if (found == facts.onus.end()) {
            complain("there is no ONU " + name);
            return exit_status;
        }
        facts.onu = *found;
        return exit_success;
    }

    ExitCode pick(uint32_t port, const std::string &mac)
    {
        if (const ExitCode code = read_port(port); code != exit_success) return code;
        const auto found = std::ranges::find(facts.onus, mac, &OnuFact::mac);
        if (found == facts.onus.end()) {
            complain("ONU " + mac + " has just gone from port " + std::to_string(port));
            return exit_status;
        }
        facts.onu = *found;
        return exit_success;
    }

    // An ONU on the blacklist is not among those of its port.
    ExitCode find_rejected(const std::string &who, const std::string &nothing_found)
    {
        const Invocation listed("bsp_pon_get_onu_blacklist", {"record.pon_port=0"}, consent());
        const auto mac = text::to_mac(who);
        for (const OnuFact &entry : read_onus(listed.good() ? listed.database() : nullptr)) {
            if (!mac || entry.mac != text::mac_text(*mac)) continue;
            if (const ExitCode code = read_port(entry.port); code != exit_success) return code;
            facts.onu = entry;
            facts.onu.state = "rejected";
            return exit_success;
        }
        const ExitCode code = report(listed);
        if (code == exit_success) complain(nothing_found);
        return std::max(code, exit_status);
    }

    Facts facts;
};

std::string neighbours_text(const Neighbours &neighbours)
{
    if (neighbours.bound == 0) return "none: no other ONU is bound at the port";
    std::string text = std::to_string(neighbours.online) + " of " + std::to_string(neighbours.bound) + " online";
    if (neighbours.offline > 0)
        text += ", " + std::to_string(neighbours.offline) + " offline, of them " + std::to_string(neighbours.together) +
                " since the same time";
    return text;
}

std::string light_text(const Facts &facts, const Diagnosis &diagnosis)
{
    if (!facts.light || !facts.light->at_olt) return "none";
    std::string text = decibel_text(*facts.light->at_olt) + " dBm at the OLT";
    if (facts.light->at_onu) text += ", " + decibel_text(*facts.light->at_onu) + " dBm at the ONU";
    if (diagnosis.margin)
        text += "; margin " + decibel_text(*diagnosis.margin) + " dB to the limit of " +
                decibel_text(facts.limits->lost) + " dBm";
    return text;
}

// Nothing else says how much light there was before an ONU went offline: the service keeps no other measurement, and no
// alarm states a power.
std::string measured_text(const Facts &facts)
{
    if (!facts.last_measured) return "never, or the last power measurement of the port was of another ONU";
    return decibel_text(facts.last_measured->power) + " dBm at the OLT, by the port's last power measurement " +
           ago_text(facts.now, facts.last_measured->at);
}

std::string cause_text(const AlarmFact &alarm)
{
    return alarm.name + (alarm.reason().empty() ? "" : " (" + alarm.reason() + ")");
}

void print_diagnosis(const Output &output, const Facts &facts, const Diagnosis &diagnosis)
{
    const OnuFact &onu = facts.onu;
    print_line(output, "ONU " + onu.name() + ": " + diagnosis.summary + ".");
    std::fputc('\n', output.stream);
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    table.add({"MAC address", onu.mac});
    if (!onu.description.empty()) table.add({"description", onu.description});
    if (!onu.loid.empty()) table.add({"LOID", onu.loid});
    table.add({"state", onu.state});
    table.add({"since", ago_text(facts.now, diagnosis.since)});
    table.add({"last cause", diagnosis.last_cause ? cause_text(*diagnosis.last_cause) : "-"});
    table.add({"light now", light_text(facts, diagnosis)});
    table.add({"last measured", measured_text(facts)});
    table.add({"neighbours", neighbours_text(diagnosis.neighbours)});
    table.print(output);
    if (!diagnosis.alarms.empty()) {
        if (output.headings) std::fputs("\nAlarms\n", output.stream);
        Table alarms(
            {{"OF"}, {"ALARM"}, {"SEVERITY"}, {"STATE"}, {"RAISED"}, {"CLEARED"}, {"CAUSE", Table::Fit::wrap}});
        for (const AlarmFact &alarm : diagnosis.alarms)
            alarms.add({alarm.subject(), alarm.name, alarm.severity, alarm.active ? "active" : "cleared",
                        ago_text(facts.now, alarm.raised), ago_text(facts.now, alarm.cleared), alarm.reason()});
        alarms.print(output);
    }
    if (diagnosis.checks.empty()) return;
    if (output.headings) std::fputs("\nCheck next\n", output.stream);
    for (size_t index = 0; index < diagnosis.checks.size(); ++index)
        print_line(output, std::to_string(index + 1) + ". " + diagnosis.checks[index]);
}

void write_diagnosis(Json &json, const Facts &facts, const Diagnosis &diagnosis)
{
    const OnuFact &onu = facts.onu;
    json->StartObject();
    json.member("onu", onu.name());
    json.member("pon_port", onu.port);
    write_member(json, "onu_id", onu.id ? std::optional<MilliTime>(*onu.id) : std::nullopt);
    json.member("mac", onu.mac);
    json.member_or_null("description", onu.description);
    json.member_or_null("loid", onu.loid);
    json.member("state", onu.state);
    json.member("verdict", diagnosis.verdict);
    json.member("summary", diagnosis.summary);
    write_member(json, "now", facts.now);
    write_member(json, "since", diagnosis.since);
    if (diagnosis.last_cause) {
        json.key("last_cause");
        write_alarm(json, *diagnosis.last_cause);
    } else {
        json.null("last_cause");
    }
    const std::optional<MeasuredFact> &measured = facts.last_measured;
    json.key("light");
    json->StartObject();
    write_member(json, "olt_rx_power", facts.light ? facts.light->at_olt : std::nullopt);
    write_member(json, "rx_power", facts.light ? facts.light->at_onu : std::nullopt);
    write_member(json, "last_measured", measured ? std::optional(measured->power) : std::nullopt);
    write_member(json, "last_measured_at", measured ? measured->at : std::nullopt);
    write_member(json, "limit", facts.limits ? std::optional(facts.limits->lost) : std::nullopt);
    write_member(json, "margin", diagnosis.margin);
    json->EndObject();
    json.key("neighbours");
    json->StartObject();
    json.member("bound", diagnosis.neighbours.bound);
    json.member("online", diagnosis.neighbours.online);
    json.member("offline", diagnosis.neighbours.offline);
    json.member("offline_together", diagnosis.neighbours.together);
    json->EndObject();
    json.key("alarms");
    json->StartArray();
    for (const AlarmFact &alarm : diagnosis.alarms)
        write_alarm(json, alarm);
    json->EndArray();
    json.texts("checks", diagnosis.checks);
    json->EndObject();
}

ExitCode run_onu_why(const Output &output, const std::string &who)
{
    refuse_hex(output, "a diagnosis");
    Case of_onu;
    if (const ExitCode code = of_onu.find(who); code != exit_success) return code;
    const ExitCode code = of_onu.ask();
    const Diagnosis diagnosis = diagnose(of_onu.known());
    if (output.format == Format::json) {
        Json json(output.stream);
        write_diagnosis(json, of_onu.known(), diagnosis);
    } else {
        print_diagnosis(output, of_onu.known(), diagnosis);
    }
    return code;
}

} // namespace

void add_why(Command &onu)
{
    Command &why = onu.add("why", "Says why an ONU is offline, waits or has weak light, and what to check next");
    std::string &who = why.runs(run_onu_why);
    why.argument("ONU", &who,
                 "PON port and id, as 1/5; or what 'onu find' finds one ONU by: its MAC address, LOID or description",
                 "SET")
        .is_required();
}

} // namespace ponctl

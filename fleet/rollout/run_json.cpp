#include "fleet/rollout/run_json.h"

#include "call/codec/errors.h"
#include "call/codec/members.h"
#include "call/json.h"
#include "fleet/protocol/topics.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace fleet
{
namespace
{

using call::JsonText;
using call::JsonValue;

// Writes an object in one line.
template <class Write>
std::string object(Write write)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    write(json);
    json->EndObject();
    return json.written();
}

std::string text_of(Share share)
{
    return std::to_string(share.amount) + (share.percent ? "%" : "");
}

void write_options(JsonText &json, const RolloutOptions &options)
{
    json.key("options");
    json->StartObject();
    json.member("concurrency", options.concurrency);
    if (options.limit) json.member("limit", *options.limit);
    if (!options.waves.empty()) {
        std::string waves;
        for (const Share share : options.waves)
            waves += text_of(share) + ",";
        json.member("waves", waves + "rest");
    }
    if (options.max_failures) json.member("max_failures", text_of(*options.max_failures));
    if (!options.check.empty()) json.member("check", options.check);
    json->EndObject();
}

RolloutOptions read_options(const JsonValue &value)
{
    RolloutOptions options;
    call::read_object(
        call::json_of(value), "options",
        {{"concurrency",
          [&](const auto &name, const JsonValue &each) {
              options.concurrency = read_concurrency(std::to_string(call::read_number(name, each)));
          }},
         {"limit", [&](const auto &name, const JsonValue &each) { options.limit = call::read_number(name, each); }},
         {"waves",
          [&](const auto &name, const JsonValue &each) { options.waves = read_waves(call::read_text(name, each)); }},
         {"max_failures",
          [&](const auto &name, const JsonValue &each) {
              options.max_failures = read_max_failures(call::read_text(name, each));
          }},
         {"check", [&](const auto &name, const JsonValue &each) { options.check = call::read_text(name, each); }}},
        {"concurrency"});
    return options;
}

std::vector<std::string> read_texts(const std::string &name, const JsonValue &value)
{
    if (!value.IsArray()) call::refuse_member(name, "an array of texts");
    std::vector<std::string> texts;
    for (const JsonValue &each : value.GetArray())
        texts.push_back(call::read_text(name, each));
    return texts;
}

uint64_t read_time(const std::string &name, const JsonValue &value)
{
    if (!value.IsUint64()) call::refuse_member(name, "seconds since 1970");
    return value.GetUint64();
}

std::vector<std::vector<std::string>> read_plan(const std::string &name, const JsonValue &value)
{
    if (!value.IsArray() || value.Empty()) call::refuse_member(name, "an array of waves");
    std::vector<std::vector<std::string>> waves;
    std::set<std::string> seen;
    for (const JsonValue &wave : value.GetArray()) {
        waves.push_back(read_texts(name, wave));
        for (const std::string &olt : waves.back())
            if (!is_name(olt) || !seen.insert(olt).second) call::refuse_member(name, "the names of OLTs, each once");
        if (waves.back().empty()) call::refuse_member(name, "OLTs in each wave");
    }
    return waves;
}

} // namespace

std::string line_of(const Run &run)
{
    return object([&](JsonText &json) {
        json.member("run", run.id);
        json.key("at");
        json->Uint64(run.at);
        json.texts("words", run.words);
        json.member("selector", run.selector);
        write_options(json, run.options);
        json.key("waves");
        json->StartArray();
        for (const std::vector<std::string> &wave : run.plan.waves) {
            json->StartArray();
            for (const std::string &olt : wave)
                json.text(olt);
            json->EndArray();
        }
        json->EndArray();
    });
}

std::string line_of_begun(std::span<const std::string> olts)
{
    return object([&](JsonText &json) { json.texts("begun", olts); });
}

std::string line_of_outcome(const std::string &digest, const Result &result)
{
    const bool kept = result.output.size() + result.errors.size() <= longest_kept;
    return object([&](JsonText &json) {
        json.member("outcome", digest);
        json.member("state", name_of(result.state));
        json.key("exit");
        json->Int(result.exit);
        json.member_or_null("output", kept ? result.output : "");
        json.member_or_null("errors", kept ? result.errors : "");
    });
}

std::string line_of_ended(const std::string &olt, const std::string &digest)
{
    return object([&](JsonText &json) {
        json.member("ended", olt);
        json.member("outcome", digest);
    });
}

std::string line_of_checked(size_t wave, int32_t exit)
{
    return object([&](JsonText &json) {
        json.member("checked", static_cast<uint32_t>(wave));
        json.key("exit");
        json->Int(exit);
    });
}

std::string line_of_over(const std::string &stopped)
{
    return object([&](JsonText &json) { json.member_or_null("over", stopped); });
}

std::string line_of_resumed(uint64_t now)
{
    return object([&](JsonText &json) {
        json.key("resumed");
        json->Uint64(now);
    });
}

std::string digest_of(const Result &result)
{
    return text::to_hex(text::sha256(std::string(name_of(result.state)) + " " + std::to_string(result.exit) + " " +
                                     std::to_string(result.output.size()) + " " + result.output + result.errors));
}

Run run_from_line(std::string_view line)
{
    Run run;
    std::vector<std::vector<std::string>> waves;
    call::read_object(
        line, "run",
        {{"run", [&](const auto &name, const JsonValue &value) { run.id = call::read_text(name, value); }},
         {"at", [&](const auto &name, const JsonValue &value) { run.at = read_time(name, value); }},
         {"words", [&](const auto &name, const JsonValue &value) { run.words = read_texts(name, value); }},
         {"selector", [&](const auto &name, const JsonValue &value) { run.selector = call::read_text(name, value); }},
         {"options", [&](const auto &, const JsonValue &value) { run.options = read_options(value); }},
         {"waves", [&](const auto &name, const JsonValue &value) { waves = read_plan(name, value); }}},
        {"run", "at", "words", "selector", "options", "waves"});
    std::vector<std::string> olts;
    for (const std::vector<std::string> &wave : waves)
        olts.insert(olts.end(), wave.begin(), wave.end());
    run.plan = plan_for(olts, run.options);
    run.plan.waves = std::move(waves);
    return run;
}

RunReader::RunReader(const Run &run) : waves(run.plan.waves.size())
{
    for (const std::vector<std::string> &wave : run.plan.waves)
        olts.insert(wave.begin(), wave.end());
}

void RunReader::check_olt(const std::string &olt) const
{
    if (!olts.contains(olt)) throw call::UsageError("'" + olt + "' is no OLT of the run");
}

void RunReader::read(std::string_view line)
{
    std::optional<std::vector<std::string>> begun;
    std::optional<std::string> ended, outcome, stopped;
    std::optional<size_t> wave;
    Result result;
    call::read_object(
        line, "line",
        {{"begun", [&](const auto &name, const JsonValue &value) { begun = read_texts(name, value); }},
         {"ended", [&](const auto &name, const JsonValue &value) { ended = call::read_text(name, value); }},
         {"outcome", [&](const auto &name, const JsonValue &value) { outcome = call::read_text(name, value); }},
         {"state",
          [&](const auto &name, const JsonValue &value) {
              const auto state = state_named(call::read_text(name, value));
              if (!state) call::refuse_member(name, "a state of an OLT");
              result.state = *state;
          }},
         {"exit", [&](const auto &name, const JsonValue &value) { result.exit = call::read_signed(name, value); }},
         {"output",
          [&](const auto &name, const JsonValue &value) { result.output = call::read_text_or_null(name, value); }},
         {"errors",
          [&](const auto &name, const JsonValue &value) { result.errors = call::read_text_or_null(name, value); }},
         {"checked", [&](const auto &name, const JsonValue &value) { wave = call::read_number(name, value); }},
         {"over", [&](const auto &name, const JsonValue &value) { stopped = call::read_text_or_null(name, value); }},
         {"resumed", [&](const auto &name, const JsonValue &value) { read_time(name, value); }}},
        {});
    if (begun) {
        for (const std::string &olt : *begun) {
            check_olt(olt);
            progress.ended.erase(olt);
            progress.begun.insert(olt);
        }
    } else if (ended) {
        check_olt(*ended);
        const auto known = outcomes.find(outcome.value_or(""));
        if (known == outcomes.end()) throw call::UsageError("outcome: no line before it has this one");
        progress.ended[*ended] = known->second;
        progress.begun.erase(*ended);
    } else if (outcome) {
        outcomes[*outcome] = result;
    } else if (wave) {
        if (*wave >= waves) throw call::UsageError("checked: the run has no such wave");
        if (result.exit == 0) progress.checked = std::max(progress.checked, *wave + 1);
    } else if (stopped) {
        over = stopped->empty();
    }
}

} // namespace fleet

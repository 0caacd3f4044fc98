// This file decides whether a command line may do what affects service. A user at a terminal is asked, once for each
// command line. A script gives its consent with --yes. The class of each command in the catalogue says what affects
// service.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call/exchange.h"
#include "hits/hit.h"
#include "output/exit_code.h"

namespace ponctl
{

// Starts a command line. With `given`, nobody is asked.
void start_consent(bool given);

// A Preview is what stands above a question: which ONUs will be hit, as a text and one by one.
struct Preview {
    std::string text;
    std::vector<Hit> hits;
};
// A preview is made only when somebody is asked, and in a dry run, which shows it.
using MakePreview = std::function<Preview()>;

// Whoever asks the user in place of this process: what will be hit, and what is to be done. Returns whether to do it.
using AskUser = std::function<bool(const std::string &preview, const std::string &action)>;
void ask_through(AskUser asks);

// Names the OLT that is asked about. Empty: there is only one.
void name_asked_olt(std::string olt);

// Asks whether to do it, unless this command line has consent already. Throws Refused when the answer is no, and when
// there is nobody to ask.
void ask(const std::string &action, const MakePreview &preview = {});
// Returns whether asking can have another end than a refusal: there is consent already, or a terminal to ask at.
bool may_ask();
// As above, when an operation or a command of this name affects service. When it does not, a dry run shows the preview
// all the same.
void ask_before(std::string_view name, const std::string &action, const MakePreview &preview = {});
// Says which ONUs the requests that follow hit, in place of those of the last preview. A dry run shows them.
void expect_hits(std::vector<Hit> hits);
// Says that the requests that follow hit only this ONU of the expected ones, until nothing is given.
void narrow_hits(const std::optional<HitOnu> &onu);
// Says what becomes different of the ONU to which the hits are narrowed.
void expect_changes(const std::vector<Change> &changes);

// Every call of the tool asks this permission: the command line's consent for a request that affects service. A request
// whose command the catalogue does not know counts as one that affects service, unless it only asks for an answer. In a
// dry run all requests are kept back.
call::Permission &consent();
// A command line asks this permission when it reads what it needs to know for a change. Such requests are sent in a dry
// run, too, and nothing but a reading is permitted.
call::Permission &looking();
// A KeptRequest was not sent, because the run is dry.
struct KeptRequest {
    Exchange exchange;
    std::vector<Hit> hits; // the ONUs that it names, as far as the command line knows them
};
// Returns the requests that were kept back since this function was last called.
std::vector<KeptRequest> take_kept_requests();
// Returns the texts of the previews of the questions that were not asked in a dry run, since this function was last
// called.
std::string take_previews();

} // namespace ponctl

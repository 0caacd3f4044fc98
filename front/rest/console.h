// What answers requests: the interface below /api/v1, the page that browsers run, and numbers for monitoring systems.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "http/message.h"
#include "http/workers.h"
#include "page/page.h"
#include "web/context.h"

namespace front
{

struct ConsoleSettings {
    bool encrypted = false;         // see GateSettings
    bool metrics_need_user = false; // of any role
};

class Console : public HttpHandler
{
public:
    using Metrics = std::function<HttpResponse(const HttpRequest &)>;

    Console(ConsoleSettings console_settings, Services made_with, Metrics answer_metrics,
            std::span<const PageFile> page_files);

    Admission admit(const HttpRequest &head) override;
    HttpAnswer answer(const HttpRequest &request) override;
    HttpResponse refusal(unsigned status, const std::string &reason) override;

private:
    // Throws a Refusal, also when the request may not be answered.
    Context context_of(const HttpRequest &request, const struct Route &route,
                       std::map<std::string, std::string> places) const;
    HttpAnswer answer_route(const HttpRequest &request) const;
    HttpAnswer answer_other(const HttpRequest &request) const;
    HttpResponse guarded(const std::function<HttpResponse()> &make) const;
    HttpResponse with_rules(HttpResponse response) const;

    const ConsoleSettings settings;
    const Services services;
    const Metrics metrics;
    const std::span<const PageFile> files;
    const std::shared_ptr<Workers> storage, passwords;
};

} // namespace front

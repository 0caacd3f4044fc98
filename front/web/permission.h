// Whether a user may have a call made. Each call by the web pages asks it.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "audit/entry.h"
#include "call/exchange.h"
#include "call/permission.h"
#include "web/context.h"

namespace front
{

class WebPermission : public call::Permission
{
public:
    // `confirm` is what the client names as confirmation; nothing is sent in a dry run.
    WebPermission(const Context &of, std::string confirm, bool only_try)
        : context(of), confirmation(std::move(confirm)), dry_run(only_try)
    {
    }

    // Throws a Refusal when the role does not allow it, and a ConfirmationNeeded.
    call::Verdict decide(const call::PermissionRequest &request) override;

    // Notes in the audit log what came of a request that writes. It does nothing when none was sent.
    void note(const std::string &result);
    // Returns what a dry run would have done, as a document; empty when no request was made.
    const std::string &would_do() const { return tried; }

private:
    const Context &context;
    const std::string confirmation;
    const bool dry_run;
    std::optional<audit::Wanted> wanted; // by the request that writes
    std::string tried;
};

// ConfirmationNeeded says what has to be confirmed.
class ConfirmationNeeded : public std::runtime_error
{
public:
    // The document is the object "confirmation" of the answer.
    ConfirmationNeeded(const std::string &message, std::string object)
        : std::runtime_error(message), document(std::move(object))
    {
    }
    const std::string document;
};
HttpResponse response_of(const ConfirmationNeeded &needed);

// Returns who asks, for the audit log.
audit::Client client_of(const Context &context);

} // namespace front

// A Permission decides whether a request may be made. Nothing is sent without asking it.
#pragma once

#include <string>

#include "call/codec/errors.h"
#include "catalogue.h"

namespace call
{

struct Exchange;

// A Request describes what is about to be sent.
struct PermissionRequest {
    std::string doing;                     // for people: "calling bsp_pon_exec_set"
    catalogue::Class impact;               // the worst class that the catalogue knows for it
    const catalogue::Operation *operation; // null: no operation of the library
    const catalogue::Command *command;     // null: the catalogue does not know it
    const Exchange &exchange;              // its channel, call and bytes
};

// The permission refused the request. what() says why, for people.
class Refused : public Error
{
    using Error::Error;
};

enum class Verdict {
    send,
    keep_back // nothing is sent, and the call continues as though it had received an empty answer
};

class Permission
{
public:
    virtual ~Permission() = default;
    // Decides whether the request is sent. Throws Refused, or another Error, when it must not be sent.
    virtual Verdict decide(const PermissionRequest &request) = 0;
};

// UpTo permits all requests up to a class.
class UpTo : public Permission
{
public:
    explicit UpTo(catalogue::Class worst) : allowed(worst) {}
    Verdict decide(const PermissionRequest &request) override;

private:
    catalogue::Class allowed;
};

} // namespace call

// Who decides whether a request may be made. Nothing is sent without being asked for.
#pragma once

#include <string>

#include "call/codec/errors.h"
#include "catalogue.h"

namespace call
{

struct Exchange;

// What is about to be sent.
struct Request {
    std::string doing;                     // for people: "calling bsp_pon_exec_set"
    catalogue::Class impact;               // the worst of what the catalogue knows that it may do to the network
    const catalogue::Operation *operation; // null: none of the library's
    const catalogue::Command *command;     // null: the catalogue does not know it
    const Exchange &exchange;              // its channel, call and bytes
};

// It was said no. what() says why, for people.
class Refused : public Error
{
    using Error::Error;
};

enum class Verdict {
    send,
    keep_back // nothing is sent, and the call goes on as though it had been answered with nothing
};

class Permission
{
public:
    virtual ~Permission() = default;
    // May this be sent? Throws Refused, or another Error, where it must not.
    virtual Verdict decide(const Request &request) = 0;
};

// Lets all requests through up to a class.
class UpTo : public Permission
{
public:
    explicit UpTo(catalogue::Class worst) : allowed(worst) {}
    Verdict decide(const Request &request) override;

private:
    catalogue::Class allowed;
};

} // namespace call

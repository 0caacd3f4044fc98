// An operation that was called: how its exchange went, and what it delivered.
#pragma once

#include "call/arguments.h"
#include "call/exchange.h"

namespace call
{

class Invocation
{
public:
    // Calls the operation with these arguments. Wrong ones are a UsageError, and what the permission throws goes on;
    // nothing is sent then.
    Invocation(const catalogue::Operation &operation, std::span<const Assignment> arguments, Permission &permission,
               Allowed allowed);
    // The same with arguments of the form name=value.
    Invocation(const catalogue::Operation &operation, const std::vector<std::string> &words, Permission &permission,
               Allowed allowed = {});
    Invocation(const char *operation, const std::vector<std::string> &words, Permission &permission);

    const catalogue::Operation &operation() const { return arguments.operation(); }
    const Exchange &exchange() const { return exchanged; }
    // What the operation returned.
    uint32_t status() const { return returned; }
    // Whether the exchange succeeded, so that there is something to show, whatever the status. Not so where the request
    // was kept back.
    bool answered() const { return exchanged.made && exchanged.result == 0 && !exchanged.kept_back; }
    // Whether the service agreed, too, or whoever kept the request back takes it that it would.
    bool good() const { return (answered() || exchanged.kept_back) && returned == 0 && exchanged.status == 0; }

    // Whether the operation delivers something through an argument.
    bool delivers(size_t index) const;
    // The database that an argument delivered; null where there is none, or nothing in it.
    db_handle *database(size_t index) const;
    std::string_view text(size_t index) const;
    // All that an argument delivered, as it is.
    std::span<const uint8_t> bytes(size_t index) const { return arguments.bytes(index); }
    // A record, response, block or word that an argument delivered.
    Reading reading(size_t index) const;
    // A word that an argument delivered: the field that it is, by its layout where there is one.
    const catalogue::Field &word_field(size_t index) const;

    // The operation's only database, its only response and its only block; it must have one.
    db_handle *database() const { return database(index_of(catalogue::ArgumentType::db)); }
    Reading response() const { return reading(index_of(catalogue::ArgumentType::response)); }
    Reading block() const;
    // The answer as it was received, whatever the operation delivers of it.
    Reading answer() const;
    // Whether the operation has an argument of this type.
    bool has(catalogue::ArgumentType type) const { return index_of(type) < operation().arguments.size(); }
    // The view that its database is.
    const catalogue::View *view() const { return command ? catalogue::find_view(*command) : nullptr; }

private:
    size_t index_of(catalogue::ArgumentType type) const;

    Arguments arguments;
    const catalogue::Command *command; // null: unknown
    Exchange exchanged;
    uint32_t returned;
};

} // namespace call

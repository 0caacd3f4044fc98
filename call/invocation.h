// An Invocation is an operation that was called. It says how the exchange went, and what the operation delivered.
#pragma once

#include "call/arguments.h"
#include "call/exchange.h"

namespace call
{

class Invocation
{
public:
    // Calls the operation with these arguments. Throws a UsageError when they are wrong, and whatever the permission
    // throws; nothing is sent then.
    Invocation(const catalogue::Operation &operation, std::span<const Assignment> arguments, Permission &permission,
               Allowed allowed);
    // As above, with arguments of the form name=value.
    Invocation(const catalogue::Operation &operation, const std::vector<std::string> &words, Permission &permission,
               Allowed allowed = {});
    Invocation(const char *operation, const std::vector<std::string> &words, Permission &permission);

    const catalogue::Operation &operation() const { return arguments.operation(); }
    const Exchange &exchange() const { return exchanged; }
    // Returns what the operation returned.
    uint32_t status() const { return returned; }
    // Returns whether the exchange succeeded, so that there is something to show, whatever the status is. Returns false
    // when the request was kept back.
    bool answered() const { return exchanged.made && exchanged.result == 0 && !exchanged.kept_back; }
    // Returns whether the service also agreed, and delivered what it should. A request that was kept back counts as one
    // that the service would have agreed to.
    bool good() const { return (answered() || exchanged.kept_back) && agreed() && wrong.empty(); }
    // Returns what is wrong with what the service delivered when it agreed, for people: a result database that is
    // missing, or not what its view describes, and a result file in which there is nothing. Returns an empty text when
    // all is right.
    const std::string &fault() const { return wrong; }

    // Returns whether the operation delivers something through an argument.
    bool delivers(size_t index) const;
    // Returns the database that an argument delivered, or null when there is none or nothing is in it.
    db_handle *database(size_t index) const;
    std::string_view text(size_t index) const;
    // Returns all bytes that an argument delivered, unchanged.
    std::span<const uint8_t> bytes(size_t index) const { return arguments.bytes(index); }
    // Returns a record, response, block or word that an argument delivered.
    Reading reading(size_t index) const;
    // Returns the field of a word that an argument delivered. It is the layout's field when there is a layout.
    const catalogue::Field &word_field(size_t index) const;

    // These return the operation's only database, its only response and its only block. The operation must have one.
    db_handle *database() const { return database(index_of(catalogue::ArgumentType::db)); }
    Reading response() const { return reading(index_of(catalogue::ArgumentType::response)); }
    Reading block() const;
    // Returns the answer as it was received, whatever the operation delivers of it.
    Reading answer() const;
    // Returns whether the operation has an argument of this type.
    bool has(catalogue::ArgumentType type) const { return index_of(type) < operation().arguments.size(); }
    // Returns the view of the operation's database.
    const catalogue::View *view() const { return command ? catalogue::find_view(*command) : nullptr; }

private:
    size_t index_of(catalogue::ArgumentType type) const;
    bool agreed() const { return returned == 0 && exchanged.status == 0; }
    std::string find_fault() const;

    Arguments arguments;
    const catalogue::Command *command; // null: unknown
    Exchange exchanged;
    uint32_t returned;
    std::string wrong;
};

} // namespace call

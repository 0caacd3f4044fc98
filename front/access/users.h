// Who may use the front end: a file with a line for each user.
//
//     NAME ROLE PASSWORD TOKEN
//
// The role is a class of the catalogue. Password and token are what they are recognised by, or "-".
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace front
{

using Role = catalogue::Class; // a role may do what is of its class, and of those before it

struct User {
    std::string name;
    Role role = Role::read;
    std::string password = {}, token = {}; // what they are recognised by; empty: there is none

    bool operator==(const User &) const = default;
};

std::optional<Role> role_of(std::string_view word);
// Returns whether somebody may be called so: up to 32 letters, digits, '-', '_' and '.', the first of which is a letter
// or a digit.
bool is_user_name(std::string_view name);

// Reads a file. Throws std::runtime_error when it cannot be read, is not private, or is wrong.
std::vector<User> read_users(const std::string &file);
// Writes it, for its user only. When that fails, the file stays as it was, and std::runtime_error is thrown.
void write_users(const std::string &file, const std::vector<User> &users);

// Users are those of a file as it is now: it is read again when it was changed. Any thread may call all functions.
class Users
{
public:
    // Throws std::runtime_error when the file cannot be read. An empty name has no users.
    explicit Users(std::string file);

    bool is_kept() const { return !file.empty(); } // in a file, however few there are
    size_t count() const;
    std::optional<User> named(std::string_view name) const;
    std::optional<User> with_token(const std::string &token) const;

private:
    // Says which file it was, and when it was changed last.
    struct Mark {
        uint64_t device = 0, inode = 0;
        int64_t size = 0, seconds = 0, nanoseconds = 0;
        bool operator==(const Mark &) const = default;
    };
    static std::optional<Mark> mark_of(const std::string &file);
    void refresh() const;

    const std::string file;
    mutable std::mutex guard;
    mutable std::optional<Mark> mark;
    mutable std::vector<User> users;
};

} // namespace front

#include "access/users.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <sys/stat.h>
#include <unistd.h>

#include "access/secrets.h"
#include "storage/private.h"

namespace front
{
namespace
{

constexpr std::string_view none = "-";
constexpr Role roles[] = {Role::read, Role::write, Role::service_affecting};

std::string or_none(const std::string &text)
{
    return text.empty() ? std::string(none) : text;
}

std::string unless_none(const std::string &text)
{
    return text == none ? std::string() : text;
}

User user_of(const std::string &line, const std::string &where)
{
    std::istringstream words(line);
    std::string name, role, password, token, more;
    words >> name >> role >> password >> token;
    const std::optional<Role> known = role_of(role);
    if (token.empty() || words >> more || !is_user_name(name) || !known)
        throw std::runtime_error(where +
                                 ": expected NAME, role, password and token, as 'ponfront user add' writes them");
    return {name, *known, unless_none(password), unless_none(token)};
}

} // namespace

std::optional<Role> role_of(std::string_view word)
{
    const auto found = std::ranges::find(roles, word, [](Role role) { return catalogue::to_text(role); });
    return found == std::end(roles) ? std::nullopt : std::optional(*found);
}

bool is_user_name(std::string_view name)
{
    const auto is_plain = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    return !name.empty() && name.size() <= 32 && is_plain(name[0]) &&
           std::ranges::all_of(name, [&](char c) { return is_plain(c) || c == '-' || c == '_' || c == '.'; });
}

std::vector<User> read_users(const std::string &file)
{
    struct stat state {
    };
    if (stat(file.c_str(), &state) == 0 && (state.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        throw std::runtime_error(file + ": others may use it; take their rights away with 'chmod go= " + file + "'");
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error(file + ": cannot be read");
    std::vector<User> users;
    std::string line;
    for (size_t number = 1; std::getline(stream, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        const std::string where = file + ":" + std::to_string(number);
        User user = user_of(line, where);
        if (std::ranges::find(users, user.name, &User::name) != users.end())
            throw std::runtime_error(where + ": " + user.name + " is there twice");
        users.push_back(std::move(user));
    }
    return users;
}

void write_users(const std::string &file, const std::vector<User> &users)
{
    std::string text = "# users of ponfront, written by 'ponfront user'\n";
    for (const User &user : users)
        text += user.name + " " + std::string(catalogue::to_text(user.role)) + " " + or_none(user.password) + " " +
                or_none(user.token) + "\n";
    const std::string fresh = file + ".new";
    std::remove(fresh.c_str()); // that of a run which was broken off
    storage::write_private_file(fresh, text);
    // Root may write the file of the user as whom the server runs.
    struct stat before {
    };
    if (geteuid() == 0 && stat(file.c_str(), &before) == 0 && chown(fresh.c_str(), before.st_uid, before.st_gid) != 0)
        throw std::runtime_error(file + ": cannot be given to its user: " + std::strerror(errno));
    if (std::rename(fresh.c_str(), file.c_str()) == 0) return;
    const std::string reason = std::strerror(errno);
    std::remove(fresh.c_str());
    throw std::runtime_error(file + ": cannot be written: " + reason);
}

Users::Users(std::string name) : file(std::move(name))
{
    if (file.empty()) return;
    mark = mark_of(file);
    users = read_users(file);
}

std::optional<Users::Mark> Users::mark_of(const std::string &file)
{
    struct stat state {
    };
    if (stat(file.c_str(), &state) != 0) return std::nullopt;
    return Mark{state.st_dev, state.st_ino, state.st_size, state.st_ctim.tv_sec, state.st_ctim.tv_nsec};
}

// A file that is gone or wrong lets nobody in: whoever was taken out of it must not come back by breaking it.
void Users::refresh() const
{
    if (file.empty()) return;
    const std::optional<Mark> now = mark_of(file);
    if (now == mark) return;
    mark = now;
    try {
        users = read_users(file);
    } catch (const std::runtime_error &) {
        users.clear();
    }
}

size_t Users::count() const
{
    const std::lock_guard lock(guard);
    refresh();
    return users.size();
}

std::optional<User> Users::named(std::string_view name) const
{
    const std::lock_guard lock(guard);
    refresh();
    const auto found = std::ranges::find(users, name, &User::name);
    return found == users.end() ? std::nullopt : std::optional(*found);
}

std::optional<User> Users::with_token(const std::string &token) const
{
    const std::string hash = hash_of_token(token);
    const std::lock_guard lock(guard);
    refresh();
    const auto found = std::ranges::find_if(users, [&](const User &user) { return is_same_secret(user.token, hash); });
    return found == users.end() ? std::nullopt : std::optional(*found);
}

} // namespace front

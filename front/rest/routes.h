// Which paths there are, and what answers them. The description of the interface is made of the same list.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "web/context.h"

namespace front
{

// Who makes an answer: the thread that took the request, or a worker, so that nobody waits for what takes time.
enum class Maker { server, storage, password, olt };

struct Parameter {
    const char *name, *brief;
    bool is_number = false;
};

struct Route {
    const char *method, *path; // a part in braces varies
    std::optional<Role> role;  // none: whoever asks
    Maker maker;
    const char *brief;
    std::variant<HttpResponse (*)(const Context &), HttpAnswer (*)(const Context &)> answer;
    std::vector<Parameter> query = {};
    std::vector<Parameter> body = {};
    std::vector<unsigned> statuses = {}; // beside that of success, and of what any path answers
    size_t longest_body = 1 << 20;
    bool has_pages = true; // it answers with JSON
};

std::span<const Route> routes();

// A Way is a route with what stands in the varying parts of its path.
struct Way {
    const Route *route = nullptr; // null: the path is known, but not with this method
    std::map<std::string, std::string> places;
    std::string allowed; // methods of the path
};
// Returns none where there is no such path.
std::optional<Way> find_way(const std::string &method, const std::string &path);

} // namespace front

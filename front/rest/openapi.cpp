#include "rest/openapi.h"

#include <algorithm>
#include <cctype>

#include "call/arguments.h"
#include "rest/routes.h"
#include "web/json.h"

namespace front
{
namespace
{

std::string status_word(unsigned status)
{
    switch (status) {
    case 200:
        return "success";
    case 204:
        return "success, without a body";
    case 304:
        return "nothing changed";
    case 428:
        return "it affects service, and has to be confirmed";
    default:
        return "an error";
    }
}

// An Object is an object of the document, from its beginning to its end.
class Object
{
public:
    explicit Object(Json &to) : json(to) { json->StartObject(); }
    Object(Json &to, std::string_view key) : json(to)
    {
        json.key(key);
        json->StartObject();
    }
    ~Object() { json->EndObject(); }
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

private:
    Json &json;
};

void write_type(Json &json, const char *type)
{
    json.member("type", std::string_view(type));
}

void write_schema_of_error(Json &json)
{
    const Object schema(json, "Error");
    write_type(json, "object");
    const Object properties(json, "properties");
    const Object error(json, "error");
    write_type(json, "object");
    const Object members(json, "properties");
    for (const char *name : {"code", "message"}) {
        const Object member(json, name);
        write_type(json, "string");
    }
}

void write_parameter(Json &json, const char *name, const char *where, const char *brief, bool number)
{
    const Object parameter(json);
    json.member("name", std::string_view(name));
    json.member("in", std::string_view(where));
    json.member("required", std::string_view(where) == "path");
    if (*brief) json.member("description", std::string_view(brief));
    const Object schema(json, "schema");
    write_type(json, number ? "integer" : "string");
}

void write_parameters(Json &json, const Route &route)
{
    json.key("parameters");
    json->StartArray();
    for (const char *name : {"olt", "port", "id"})
        if (std::string_view(route.path).find("{" + std::string(name) + "}") != std::string_view::npos)
            write_parameter(json, name, "path", "", name != std::string_view("olt"));
    for (const Parameter &parameter : route.query)
        write_parameter(json, parameter.name, "query", parameter.brief, parameter.is_number);
    json->EndArray();
}

void write_response(Json &json, unsigned status, const Route &route)
{
    const Object response(json, std::to_string(status));
    json.member("description", status_word(status));
    if (status == 204 || status == 304 || (status < 300 && !route.has_pages)) return;
    const Object content(json, "content");
    const Object media(json, "application/json");
    const Object schema(json, "schema");
    if (status < 300)
        write_type(json, "object");
    else
        json.member("$ref", std::string_view("#/components/schemas/Error"));
}

void write_responses(Json &json, const Route &route)
{
    const Object responses(json, "responses");
    std::vector<unsigned> statuses = route.statuses;
    if (std::ranges::find(statuses, 204u) == statuses.end()) statuses.push_back(200);
    statuses.push_back(400);
    if (route.role) statuses.push_back(401);
    if (std::string_view(route.path).find('{') != std::string_view::npos) statuses.push_back(404);
    if (route.method != std::string_view("GET")) statuses.push_back(403);
    std::ranges::sort(statuses);
    const auto doubled = std::ranges::unique(statuses);
    statuses.erase(doubled.begin(), doubled.end());
    for (const unsigned status : statuses)
        write_response(json, status, route);
}

void write_head(Json &json, const Route &route, std::string_view id, std::string_view brief, std::string_view role)
{
    json.member("operationId", id);
    json.member("summary", brief);
    if (!role.empty()) json.member("x-role", role);
    write_parameters(json, route);
    write_responses(json, route);
}

// Names an operation of the document by its method and path: getOltsOltPorts.
std::string id_of(const Route &route)
{
    std::string id = std::string_view(route.method) == "GET"    ? "get"
                     : std::string_view(route.method) == "POST" ? "post"
                                                                : "delete";
    bool raised = true;
    for (const char c : std::string_view(route.path)) {
        if (c == '/' || c == '{' || c == '}') {
            raised = true;
        } else {
            id += raised ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
            raised = false;
        }
    }
    return id;
}

// Writes what a body of JSON may have.
template <class WriteMembers>
void write_body(Json &json, WriteMembers write_members)
{
    const Object body(json, "requestBody");
    const Object content(json, "content");
    const Object media(json, "application/json");
    const Object schema(json, "schema");
    write_type(json, "object");
    const Object properties(json, "properties");
    write_members();
}

void write_route(Json &json, const Route &route)
{
    const Object operation(json, route.method == std::string_view("GET")    ? "get"
                                 : route.method == std::string_view("POST") ? "post"
                                                                            : "delete");
    write_head(json, route, id_of(route), route.brief, route.role ? catalogue::to_text(*route.role) : "");
    if (route.body.empty()) return;
    write_body(json, [&] {
        for (const Parameter &member : route.body) {
            const Object property(json, member.name);
            write_type(json, member.is_number ? "integer" : "string");
            json.member("description", std::string_view(member.brief));
        }
    });
}

void write_argument(Json &json, const catalogue::Operation &called, const catalogue::Argument &argument)
{
    const Object property(json, argument.name);
    json.member("description", argument.brief);
    json.member("x-type", call::type_name(called, argument));
    if (call::takes_fields(called, argument)) return; // an object, or what stands for it
    json.key("type");
    json->StartArray();
    for (const std::string_view type : {"integer", "string", "array"})
        json.put(type);
    json->EndArray();
}

void write_arguments(Json &json, const catalogue::Operation &called)
{
    const Object arguments(json, "arguments");
    write_type(json, "object");
    {
        const Object properties(json, "properties");
        for (const catalogue::Argument &argument : called.arguments)
            if (!call::is_output(argument) && !call::is_ignored(argument)) write_argument(json, called, argument);
    }
    json.key("required");
    json->StartArray();
    for (const catalogue::Argument &argument : called.arguments)
        if (!call::is_output(argument) && !call::is_ignored(argument) && !call::may_be_omitted(argument))
            json.put(argument.name);
    json->EndArray();
}

// An operation of the catalogue has a path of its own.
void write_call(Json &json, const Route &route, const catalogue::Operation &called)
{
    const Object path(json, "/olts/{olt}/calls/" + std::string(called.name));
    const Object operation(json, "post");
    write_head(json, route, called.name, called.brief, catalogue::to_text(called.impact));
    json.key("tags");
    json->StartArray();
    json.put(called.family);
    json->EndArray();
    write_body(json, [&] {
        write_arguments(json, called);
        for (const auto &[name, type] : {std::pair{"confirm", "string"},
                                         {"dry_run", "boolean"},
                                         {"allow_long", "boolean"},
                                         {"deadline_ms", "integer"}}) {
            const Object property(json, name);
            write_type(json, type);
        }
    });
}

void write_paths(Json &json)
{
    const Object paths(json, "paths");
    std::vector<std::string_view> done;
    for (const Route &route : routes()) {
        const std::string_view path = route.path;
        if (path.ends_with("{operation}")) {
            for (const catalogue::Operation &called : catalogue::operations())
                write_call(json, route, called);
            continue;
        }
        if (std::ranges::find(done, path) != done.end()) continue;
        done.push_back(path);
        const Object item(json, path);
        for (const Route &same : routes())
            if (path == same.path) write_route(json, same);
    }
}

} // namespace

std::string openapi_text()
{
    Json json;
    json->StartObject();
    json.member("openapi", std::string_view("3.1.0"));
    {
        const Object info(json, "info");
        json.member("title", std::string_view("ponfront"));
        json.member("version", std::string_view("1"));
        json.member("description", std::string_view("What is known of OLTs, and calls of their operations."));
    }
    json.key("servers");
    json->StartArray();
    {
        const Object server(json);
        json.member("url", std::string_view("/api/v1"));
    }
    json->EndArray();
    write_paths(json);
    {
        const Object components(json, "components");
        {
            const Object schemas(json, "schemas");
            write_schema_of_error(json);
        }
        const Object schemes(json, "securitySchemes");
        const Object token(json, "token");
        write_type(json, "http");
        json.member("scheme", std::string_view("bearer"));
    }
    json->EndObject();
    return json.text();
}

} // namespace front

// These tests check the server as its clients see it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "http/server.h"
#include "http_client.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Http : public testing::Test
{
protected:
    std::string get(const std::string &path, const std::string &lines = {}, const char *method = "GET") const
    {
        return http_get(server.port(), path, lines, method);
    }

    const HttpServer server{"127.0.0.1", 0, [](const HttpRequest &request) -> HttpResponse {
                                if (request.path == "/throws") throw std::runtime_error("no");
                                const auto name = request.query.find("name");
                                return {.type = "text/plain",
                                        .body = request.path + "|" + request.accept + "|" +
                                                (name == request.query.end() ? "" : name->second)};
                            }};
};

TEST_F(Http, HandsOverPathQueryAndWhatIsAccepted)
{
    EXPECT_THAT(get("/a?name=b%20c", "Accept: text/plain\r\n"),
                AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("Content-Type: text/plain\r\n"),
                      HasSubstr("X-Content-Type-Options: nosniff\r\n"), EndsWith("\r\n\r\n/a|text/plain|b c")));
}

TEST_F(Http, HasTheHeadAlone)
{
    EXPECT_THAT(get("/a", {}, "HEAD"), AllOf(HasSubstr("Content-Length: 4\r\n"), EndsWith("\r\n\r\n")));
}

TEST_F(Http, ChangesNothing)
{
    EXPECT_THAT(get("/a", "Content-Length: 3\r\n\r\nabc", "POST"),
                AllOf(StartsWith("HTTP/1.1 405 "), HasSubstr("Allow: GET, HEAD\r\n")));
}

TEST_F(Http, SaysWhenItCannotAnswer)
{
    EXPECT_THAT(get("/throws"), AllOf(StartsWith("HTTP/1.1 500 "), Not(HasSubstr("no\n"))));
}

TEST_F(Http, TakesNoLongHead)
{
    EXPECT_THAT(get("/" + std::string(100'000, 'a')), StartsWith("HTTP/1.1 41"));
}

TEST(HttpServer, NamesAnAddressThatIsNone)
{
    EXPECT_THROW(HttpServer("localhost", 0, {}), std::runtime_error);
    const HttpServer first("127.0.0.1", 0, {});
    EXPECT_THROW(HttpServer("127.0.0.1", first.port(), {}), std::runtime_error);
}

} // namespace

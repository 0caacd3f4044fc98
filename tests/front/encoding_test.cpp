// These tests check which answers are compressed, for whom.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "http/encoding.h"
#include "http/server.h"
#include "http_client.h"
#include "page/page.h"
#include "web/context.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Key;
using testing::Not;
using testing::Pair;
using testing::StartsWith;

const std::string text(20'000, 'a');

HttpRequest request_with(const std::string &accepted, const std::string &known = {})
{
    HttpRequest request;
    if (!accepted.empty()) request.headers["accept-encoding"] = accepted;
    if (!known.empty()) request.headers["if-none-match"] = known;
    return request;
}

TEST(Encoding, FollowsTheWeightsOfTheClient)
{
    for (const char *line :
         {"gzip", "gzip, deflate, br", "GZIP", "x-gzip", "*", "br;q=1, gzip;q=0.5", "gzip;q=1.0, identity;q=0.5",
          "deflate,\tgzip ; q=0.001", "identity;q=0, *;q=0.5", "gzip;q=0.5, identity;q=0.5"})
        EXPECT_TRUE(takes_gzip(line)) << line;
    for (const char *line : {"", "identity", "br", "gzip;q=0", "gzip;q=0.000", "*;q=0", "gzip;q=0, *",
                             "gzip;q=0.5, identity", "gzip;q=high", "gzip;q=", "gzipped", "deflate"})
        EXPECT_FALSE(takes_gzip(line)) << line;
    EXPECT_TRUE(takes_identity("gzip"));
    EXPECT_TRUE(takes_identity("*;q=0, identity;q=0.1"));
    EXPECT_FALSE(takes_identity("gzip, identity;q=0"));
    EXPECT_FALSE(takes_identity("gzip, *;q=0"));
}

TEST(Encoding, GivesBackWhatItPacked)
{
    for (const std::string &each : {std::string(), std::string("a\0b", 3), text, std::string(300'000, '\xff')})
        EXPECT_EQ(gunzip(gzip(each)), each);
    EXPECT_LT(gzip(text).size(), 200u);
    EXPECT_THROW(gunzip("nothing"), std::runtime_error);
    EXPECT_THROW(gunzip(gzip(text).substr(0, 30)), std::runtime_error);
    EXPECT_THROW(gunzip(""), std::runtime_error);
}

TEST(Encoding, PacksTextsThatAreLong)
{
    const auto answer = [](HttpResponse response, const std::string &accepted = "gzip") {
        return encoded(request_with(accepted), std::move(response));
    };
    const HttpResponse packed = answer({.type = "application/json", .body = text});
    EXPECT_THAT(packed.headers, Contains(Pair("Content-Encoding", "gzip")));
    EXPECT_THAT(packed.headers, Contains(Pair("Vary", "Accept-Encoding")));
    EXPECT_EQ(gunzip(packed.body), text);
    const HttpResponse plain = answer({.type = "application/json", .body = text}, "identity");
    EXPECT_THAT(plain.headers, AllOf(Not(Contains(Key("Content-Encoding"))), Contains(Key("Vary"))));
    EXPECT_EQ(plain.body, text);
    EXPECT_THAT(answer({.body = "short"}).headers, Not(Contains(Key("Content-Encoding"))));
    EXPECT_THAT(answer({.body = "short"}, "gzip, identity;q=0").headers, Contains(Key("Content-Encoding")));
    EXPECT_THAT(answer({.type = "application/octet-stream", .body = text}).headers, testing::IsEmpty());
    const HttpResponse twice = answer(packed);
    EXPECT_EQ(twice.body, packed.body) << "what is packed stays so";
}

TEST(Encoding, IsBehindTheTagOfAnAnswer)
{
    Pages pages;
    int made = 0;
    const auto ask = [&](const std::string &accepted, const std::string &known = {}, const std::string &version = "1") {
        return versioned(pages, request_with(accepted, known), "/a", version, [&made] {
            ++made;
            return text;
        });
    };
    const HttpResponse packed = ask("gzip"), plain = ask("");
    EXPECT_EQ(made, 1);
    EXPECT_EQ(gunzip(*packed.shared), text);
    EXPECT_EQ(*plain.shared, text);
    EXPECT_EQ(ask("gzip").shared, packed.shared) << "it is packed once for all";
    const auto tag = [](const HttpResponse &response) {
        const auto found = std::ranges::find(response.headers, "ETag", &std::pair<std::string, std::string>::first);
        return found == response.headers.end() ? std::string() : found->second;
    };
    EXPECT_THAT(tag(packed), AllOf(StartsWith("W/\""), EndsWith("\"")));
    EXPECT_EQ(tag(packed), tag(plain));
    for (const std::string &known :
         {tag(packed), "\"other\", " + tag(packed), tag(packed).substr(2), std::string("*")}) {
        const HttpResponse unchanged = ask("gzip", known);
        EXPECT_EQ(unchanged.status, 304u) << known;
        EXPECT_THAT(unchanged.headers, AllOf(Contains(Pair("ETag", tag(packed))), Contains(Key("Vary")),
                                             Contains(Key("Cache-Control")), Not(Contains(Key("Content-Encoding")))));
        EXPECT_EQ(unchanged.shared, nullptr);
    }
    EXPECT_EQ(ask("gzip", tag(packed), "2").status, 200u);
}

class Texts : public HttpHandler
{
public:
    Admission admit(const HttpRequest &) override { return {}; }
    HttpAnswer answer(const HttpRequest &request) override
    {
        const HttpResponse response{.type = "application/json", .body = text};
        if (request.path == "/stream") return Stream{std::make_unique<Messages>()};
        if (request.path == "/later") return Deferred{workers, [response] { return response; }};
        return response;
    }
    HttpResponse refusal(unsigned status, const std::string &reason) override
    {
        return {.status = status, .body = reason};
    }

private:
    struct Messages : MessageSource {
        std::optional<std::string> next() override
        {
            if (said) return std::nullopt;
            said = true;
            return "data: " + text + "\n\n";
        }
        bool said = false;
    };
    const std::shared_ptr<Workers> workers = std::make_shared<Workers>(1, 1);
};

class EncodedAnswers : public testing::Test
{
protected:
    std::string get(const std::string &path, const std::string &accepted, const char *method = "GET") const
    {
        return http_get(server.port(), path, accepted.empty() ? "" : "Accept-Encoding: " + accepted + "\r\n", method);
    }

    Texts handler;
    const HttpServer server{HttpSettings(), handler};
};

TEST_F(EncodedAnswers, ArePackedForWhoeverTakesThemSo)
{
    for (const char *path : {"/now", "/later"}) {
        const std::string answer = get(path, "gzip");
        EXPECT_THAT(answer,
                    AllOf(HasSubstr("\r\nContent-Encoding: gzip\r\n"), HasSubstr("\r\nVary: Accept-Encoding\r\n"),
                          HasSubstr("\r\nContent-Length: " + std::to_string(body_of(answer).size()) + "\r\n")));
        EXPECT_EQ(gunzip(body_of(answer)), text);
        for (const char *accepted : {"", "identity", "gzip;q=0", "br"})
            EXPECT_THAT(get(path, accepted),
                        AllOf(Not(HasSubstr("Content-Encoding")), HasSubstr("\r\nVary: "), EndsWith(text)));
    }
}

TEST_F(EncodedAnswers, HaveTheSameHeadAlone)
{
    const std::string whole = get("/now", "gzip"), head = get("/now", "gzip", "HEAD");
    const auto without_date = [](std::string lines) {
        const size_t start = lines.find("Date: ");
        if (start != lines.npos) lines.erase(start, lines.find("\r\n", start) - start);
        return lines;
    };
    EXPECT_EQ(without_date(head), without_date(whole.substr(0, whole.find("\r\n\r\n") + 4)));
}

TEST_F(EncodedAnswers, AreNeverPackedInAStream)
{
    EXPECT_THAT(get("/stream", "gzip"), AllOf(HasSubstr("text/event-stream"), Not(HasSubstr("Content-Encoding")),
                                              HasSubstr("data: " + text + "\n\n")));
}

TEST(PageFiles, ArePacked)
{
    ASSERT_FALSE(page_files().empty());
    for (const PageFile &file : page_files())
        EXPECT_FALSE(gunzip(file.packed).empty()) << file.path;
}

} // namespace

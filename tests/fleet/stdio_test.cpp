// How an OLT is served over two descriptors, as over ssh.
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "fake_service.h"
#include "fleet/bridge/stdio.h"
#include "text/words.h"

namespace
{

using namespace fleet;
using catalogue::Class;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string reading = R"({"call":{"operation":"bsp_pon_exec_get_json_","arguments":{"cmd":384,"pon_port":1}}})";
const std::string writing =
    R"({"id":"w-1","call":{"operation":"bsp_pon_onu_description","arguments":{"pon_port":1,"onu_id":5,"text":"shop"}}})";

class Served : public testing::Test
{
protected:
    Served()
    {
        state = mkdtemp(state.data());
        std::signal(SIGPIPE, SIG_IGN); // a line that is none is not read to its end
    }
    ~Served() override { std::filesystem::remove_all(state); }

    // Serves until these lines end. Returns the lines that were written, of which the first is the greeting.
    std::vector<std::string> serve(const std::string &lines, Class allow = Class::service_affecting)
    {
        int in[2], out[2];
        if (pipe2(in, O_CLOEXEC) || pipe2(out, O_CLOEXEC)) throw std::runtime_error("no pipe");
        std::thread writer([&] {
            for (std::string_view rest = lines; !rest.empty();) {
                const ssize_t written = write(in[1], rest.data(), rest.size());
                if (written <= 0) break;
                rest.remove_prefix(static_cast<size_t>(written));
            }
            close(in[1]);
        });
        std::string text;
        std::thread reader([&] {
            char part[4096];
            for (ssize_t got; (got = read(out[0], part, sizeof part)) > 0;)
                text.append(part, static_cast<size_t>(got));
        });
        failure.clear();
        try {
            serve_lines(
                in[0], out[1],
                {.olt = {.name = "north", .socket_dir = service.folder(), .allow = allow, .journal = state + "/j"},
                 .hello = {.version = "1", .allow = allow},
                 .client = "ann",
                 .notes = {.audit = [this](const std::string &, const std::string &line) { audit.push_back(line); },
                           .complain = [](const std::string &) {}}});
        } catch (const std::runtime_error &error) {
            failure = error.what();
        }
        close(out[1]);
        close(in[0]);
        writer.join();
        reader.join();
        close(out[0]);
        std::vector<std::string> written = text::split(text, '\n');
        EXPECT_EQ(written.back(), "");
        written.pop_back();
        return written;
    }
    static std::string frame(const std::string &correlation, Class impact, const std::string &request)
    {
        return to_line(RequestFrame{correlation, impact, request}) + "\n";
    }

    std::string state = "/tmp/stdio_test_XXXXXX";
    FakeService service{status(0)};
    std::vector<std::string> audit;
    std::string failure;
};

TEST_F(Served, GreetsAndAnswersWhatComes)
{
    const auto lines = serve(frame("a", Class::read, reading) + frame("b", Class::service_affecting, writing));
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(hello_from_line(lines[0]), (Hello{"1", Class::service_affecting}));
    EXPECT_EQ(answer_from_line(lines[1]).correlation, "a");
    EXPECT_THAT(answer_from_line(lines[2]).answer, StartsWith("{\"outcome\":"));
    EXPECT_THAT(audit, ElementsAre(HasSubstr(R"("user":"ann","address":"ssh","olt":"north")")));
    EXPECT_EQ(failure, "");
}

TEST_F(Served, ExecutesOnceWhatComesToTwoOfThem)
{
    const std::string line = frame("a", Class::write, writing);
    EXPECT_EQ(serve(line), serve(line));
    EXPECT_THAT(service.settings(), SizeIs(1));
}

TEST_F(Served, AllowsNoMoreThanItSays)
{
    const auto lines = serve(frame("a", Class::service_affecting, writing), Class::read);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(hello_from_line(lines[0]).allow, Class::read);
    EXPECT_THAT(answer_from_line(lines[1]).answer, HasSubstr("this OLT allows read"));
    EXPECT_THAT(service.received(), IsEmpty());
}

TEST_F(Served, EndsWithALineThatIsNone)
{
    for (const std::string &line :
         {std::string("hello\n"), std::string("{\"correlation\":\"a\"}\n"), std::string(3'000'000, 'x')}) {
        EXPECT_THAT(serve(line), SizeIs(1)) << line.substr(0, 100);
        EXPECT_NE(failure, "");
    }
    EXPECT_THAT(service.received(), IsEmpty());
}

} // namespace

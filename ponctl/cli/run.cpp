#include "cli/run.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <sys/ioctl.h>
#include <unistd.h>

#include "call/exchange.h"
#include "call/json.h"
#include "cli/repeat.h"
#include "output/consent.h"
#include "output/csv.h"
#include "output/exchanges.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/output.h"
#include "output/text.h"

namespace ponctl
{
namespace
{

// A Capture is what is written to a stream in memory.
class Capture
{
public:
    Capture() : opened(open_memstream(&text, &length))
    {
        if (!opened) throw std::bad_alloc();
    }
    ~Capture()
    {
        std::fclose(opened);
        std::free(text);
    }
    Capture(const Capture &) = delete;
    Capture &operator=(const Capture &) = delete;

    // Returns the same output, but directed to this stream.
    Output instead_of(Output output) const
    {
        output.stream = opened;
        return output;
    }
    std::string_view written()
    {
        std::fflush(opened);
        return {text, length};
    }

private:
    char *text = nullptr;
    size_t length = 0;
    std::FILE *opened;
};

// Acts once. In JSON it writes one document in every case: when the action has no result, the document says how it
// ended.
ExitCode answer(const Action &action, const Output &output)
{
    const size_t before = Json::count();
    const ExitCode code = action(output);
    if (output.format == Format::json && Json::count() == before) print_ending(output, last_exchange(), code);
    return code;
}

// `heading` is the last heading line of CSV.
ExitCode show(const Action &action, const Output &output, std::string &heading)
{
    if (output.format != Format::csv) return answer(action, output);
    Capture capture;
    Output json = capture.instead_of(output);
    json.format = Format::json;
    std::vector<std::string> columns;
    json.columns = &columns;
    const ExitCode code = answer(action, json);
    print_csv(output, capture.written(), heading, columns);
    return code;
}

ExitCode show(const Action &action, const Output &output)
{
    std::string heading;
    return show(action, output, heading);
}

void show_requests(const Output &output, const std::vector<KeptRequest> &requests)
{
    const std::string changes = take_previews();
    show(
        [&](const Output &wanted) {
            print_requests(wanted, requests, changes);
            return exit_success;
        },
        output);
}

// Shows only the requests, also those that were made before an error was found.
ExitCode run_dry(const Action &action, const Output &output)
{
    take_kept_requests();
    take_previews();
    Capture unseen;
    try {
        const ExitCode code = action(unseen.instead_of(output));
        show_requests(output, take_kept_requests());
        return code;
    } catch (const Error &) {
        if (const auto requests = take_kept_requests(); !requests.empty()) show_requests(output, requests);
        throw;
    }
}

// Writes over the terminal from its top, line by line, so that nothing flickers. Writes as many lines as fit.
void draw(std::FILE *stream, const std::string &text)
{
    winsize size{};
    size_t room = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_row > 1 ? size.ws_row - 1u : 23;
    constexpr const char *home_without_wrapping = "\033[H\033[?7l", *end_of_line = "\033[K\n",
                         *end_with_wrapping = "\033[J\033[?7h";
    std::string screen = home_without_wrapping;
    for (size_t at = 0; at < text.size() && room > 0; --room) {
        const size_t end = std::min(text.find('\n', at), text.size());
        screen.append(text, at, end - at).append(end_of_line);
        at = end + 1;
    }
    std::fputs((screen + end_with_wrapping).c_str(), stream);
}

// Shows one reading in place of the one before it, or behind it.
void put(const Output &output, const Watching &watching, std::string_view reading, bool first)
{
    if (output.format == Format::json) {
        std::fprintf(output.stream, "%s\n", compact(reading).c_str());
    } else if (output.terminal && output.format != Format::csv) {
        draw(output.stream,
             watching.title + ", every " + watching.interval + " s, at " + time_text() + "\n\n" + std::string(reading));
    } else {
        if (!first && output.format != Format::csv) std::fputc('\n', output.stream);
        std::fwrite(reading.data(), 1, reading.size(), output.stream);
    }
    std::fflush(output.stream);
}

// A Hold holds back the text for standard error until it is destroyed.
class Hold
{
public:
    Hold() { mode().held = &said; }
    ~Hold()
    {
        mode().held = nullptr;
        std::fputs(said.c_str(), stderr);
    }
    Hold(const Hold &) = delete;
    Hold &operator=(const Hold &) = delete;

private:
    std::string said;
};

ExitCode watch(const Action &action, const Output &output, const Watching &watching)
{
    Repeat repeat(watching.interval, watching.count);
    std::string heading;
    for (bool first = true; repeat.next(); first = false) {
        Capture capture;
        const Hold hold; // otherwise the reading would be written over the text
        const ExitCode code = show(action, capture.instead_of(output), heading);
        put(output, watching, capture.written(), first);
        if (code != exit_success) return code;
    }
    return exit_success;
}

} // namespace

ExitCode run(const Action &action, const Output &output, const std::optional<Watching> &watching)
{
    if (mode().dry_run) return run_dry(action, output);
    return watching ? watch(action, output, *watching) : show(action, output);
}

} // namespace ponctl

// The text in which monitoring systems read numbers: families of samples, in the format of Prometheus or of
// OpenMetrics.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace front
{

enum class Format : uint8_t { prometheus, openmetrics };

// Returns the media type of a format, for HTTP.
std::string_view media_type(Format format);
// Returns the format that a client prefers by its Accept line.
Format accepted_format(std::string_view accept);

enum class MetricType : uint8_t { gauge, counter, info };

struct Label {
    std::string_view name;
    std::string_view value;
};

class Exposition
{
public:
    explicit Exposition(Format as) : format(as) {}

    // Starts a family. The name of a counter or an info is without the ending that its samples have.
    void family(std::string_view name, MetricType type, std::string_view help);
    void sample(std::initializer_list<Label> labels, uint64_t value);
    void sample(std::initializer_list<Label> labels, double value);

    // Ends the text and returns it. Nothing can be added after this.
    std::string text();

private:
    void start_sample(std::initializer_list<Label> labels);

    const Format format;
    std::string sample_name;
    std::string written;
};

} // namespace front

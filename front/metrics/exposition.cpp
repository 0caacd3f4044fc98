#include "metrics/exposition.h"

#include <charconv>

#include "text/utf8.h"

namespace front
{
namespace
{

std::string_view word_of(MetricType type, Format format)
{
    switch (type) {
    case MetricType::gauge:
        break;
    case MetricType::counter:
        return "counter";
    case MetricType::info:
        return format == Format::openmetrics ? "info" : "gauge";
    }
    return "gauge";
}

std::string_view ending_of(MetricType type)
{
    switch (type) {
    case MetricType::gauge:
        break;
    case MetricType::counter:
        return "_total";
    case MetricType::info:
        return "_info";
    }
    return {};
}

void append_escaped(std::string &text, std::string_view value)
{
    for (const char c : value) {
        if (c == '\\' || c == '"') text.push_back('\\');
        text.push_back(c);
    }
}

template <class Number>
void append_number(std::string &text, Number value)
{
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    text.push_back('\n');
}

} // namespace

std::string_view media_type(Format format)
{
    return format == Format::openmetrics ? "application/openmetrics-text; version=1.0.0; charset=utf-8"
                                         : "text/plain; version=0.0.4; charset=utf-8";
}

Format accepted_format(std::string_view accept)
{
    return accept.find("application/openmetrics-text") == accept.npos ? Format::prometheus : Format::openmetrics;
}

void Exposition::family(std::string_view name, MetricType type, std::string_view help)
{
    sample_name = name;
    sample_name += ending_of(type);
    // OpenMetrics describes the family, and the older format describes the samples.
    const std::string_view described = format == Format::openmetrics ? name : sample_name;
    written.append("# HELP ").append(described).append(" ").append(help).append("\n");
    written.append("# TYPE ").append(described).append(" ").append(word_of(type, format)).append("\n");
}

void Exposition::start_sample(std::initializer_list<Label> labels)
{
    written += sample_name;
    char before = '{';
    for (const Label &label : labels) {
        written.push_back(before);
        written.append(label.name).append("=\"");
        append_escaped(written, text::is_printable(label.value) ? label.value : text::printable(label.value));
        written.push_back('"');
        before = ',';
    }
    written += labels.size() > 0 ? "} " : " ";
}

void Exposition::sample(std::initializer_list<Label> labels, uint64_t value)
{
    start_sample(labels);
    append_number(written, value);
}

void Exposition::sample(std::initializer_list<Label> labels, double value)
{
    start_sample(labels);
    append_number(written, value);
}

std::string Exposition::text()
{
    if (format == Format::openmetrics) written += "# EOF\n";
    return std::move(written);
}

} // namespace front

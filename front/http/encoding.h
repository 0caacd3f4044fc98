// Compression of answers, where a client takes it.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "http/message.h"

namespace front
{

// Returns whether a client takes gzip by its line Accept-Encoding, and does not like an answer as it is better.
bool takes_gzip(std::string_view accepted);
// Returns whether a client takes an answer as it is.
bool takes_identity(std::string_view accepted);

std::string gzip(std::string_view text);
// Throws std::runtime_error when it is no gzip.
std::string gunzip(std::string_view packed);

// A PackableText is one that many answers have. It is compressed once for all who take it so.
class PackableText
{
public:
    explicit PackableText(std::string of) : text(std::make_shared<const std::string>(std::move(of))) {}

    // Returns an answer, in the way that the client wants it. Any thread may call this.
    HttpResponse response_to(const HttpRequest &request) const;

private:
    const std::shared_ptr<const std::string> text;
    mutable std::mutex guard; // held by whoever uses the next
    mutable std::shared_ptr<const std::string> packed;
};

// Returns the answer as the client wants it: compressed where that saves something. What is compressed already, or is
// no text, stays as it is.
HttpResponse encoded(const HttpRequest &request, HttpResponse response);

} // namespace front

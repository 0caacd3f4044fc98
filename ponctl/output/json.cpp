#include "output/json.h"

namespace ponctl
{
namespace
{

size_t documents = 0; // number of JSON documents that were written

} // namespace

Json::Json(std::FILE *to) : stream(to)
{
    ++documents;
}

Json::~Json()
{
    const std::string document = written();
    std::fwrite(document.data(), 1, document.size(), stream);
    std::fputc('\n', stream);
}

size_t Json::count()
{
    return documents;
}

} // namespace ponctl

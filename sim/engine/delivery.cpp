#include "engine/delivery.h"

#include <utility>

namespace ponsim
{
namespace
{

// Returns the answer with the name of a result file in it.
std::string naming(std::string answer, const ResultFile &file)
{
    const size_t end = file.name_at + result_file_name.size() + 1;
    if (answer.size() < end) answer.resize(end);
    answer.replace(file.name_at, result_file_name.size(), result_file_name);
    return answer;
}

} // namespace

Delivery delivery_of(const Reply &reply, const Message &message)
{
    Delivery delivery{reply.status};
    if (!reply.understood || !is_get(message)) return delivery;
    delivery.answer = reply.answer ? std::string_view(*reply.answer)
                                   : std::string_view(static_cast<const char *>(message.data), message.length);
    if (reply.result) {
        delivery.result_key = *command_of(message);
        delivery.result = *reply.result;
    }
    if (reply.file) delivery.file = reply.file->content;
    return delivery;
}

void complete(Reply &reply, const Message &message, std::span<const FaultCase> faults)
{
    for (const FaultCase &fault : faults)
        spoil(reply, fault);
    if (reply.file) reply.answer = naming(reply.answer.value_or(std::string()), *reply.file);
    if (faults.empty() || !reply.understood || !is_get(message)) return;
    if (!reply.answer) reply.answer.emplace(static_cast<const char *>(message.data), message.length);
    for (const FaultCase &fault : faults)
        spoil(*reply.answer, fault, message);
}

} // namespace ponsim

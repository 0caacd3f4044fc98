#include "web/roll_back.h"

#include "board/ipc.h"
#include "configuration/olt.h"

namespace front
{

std::string load_configuration(const std::string &text)
{
    call::UpTo permission(catalogue::Class::service_affecting);
    std::string problem;
    config::load_into_olt(text, permission, [&problem](const call::Invocation &sent, bool) {
        if (sent.good()) return;
        const uint32_t word = sent.status() != 0 ? sent.status() : sent.exchange().status;
        const catalogue::Status *const status = catalogue::find_status(word);
        problem = !sent.answered() ? std::string(ipc_strerror(sent.exchange().result))
                  : status         ? std::string(status->brief)
                                   : "status " + std::to_string(word);
    });
    return problem;
}

} // namespace front

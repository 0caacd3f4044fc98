#include "daemon/journal.h"

#include <stdexcept>
#include <string_view>

#include "daemon/console.h"

namespace ponsim
{

Journal::Journal(const std::string &file, const Store &store, ModelTime now)
{
    if (file.empty()) return;
    recorder.reset(board_recorder_open(file.c_str()));
    if (!recorder) throw std::runtime_error("cannot record in " + file);
    const StoreImage image = store.image();
    std::string_view rest = image.bytes, part;
    do {
        part = rest.substr(0, BOARD_NOTE_MAX);
        rest.remove_prefix(part.size());
        board_recorder_note(recorder.get(), now * ns_per_ms, control_module, image_channel, part.data(),
                            static_cast<uint32_t>(part.size()));
    } while (part.size() == BOARD_NOTE_MAX);
}

void Journal::record(ModelTime now, uint32_t module, board_request request, const board_answer *answer)
{
    if (!recorder) return;
    request.pid = 0;
    board_recorder_write(recorder.get(), now * ns_per_ms, module, &request, answer);
}

} // namespace ponsim

// The two image banks of ONUs, and images that are pushed to them part by part.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/onu/remote.h"

namespace ponsim
{

inline constexpr uint32_t max_image_size = 16 * 1024 * 1024; // bytes

// What an ONU has, as it is kept. Banks are counted from 0.
struct Banks {
    struct Bank {
        std::array<char, 20> version = {}; // zeros behind it
        uint32_t valid = 0;                // complete and verified
        uint32_t size = 0;
        uint32_t received = 0;
        uint32_t crc = 0; // CRC-32 of what has been received

        std::string_view name() const { return version.data(); }
        uint32_t percent() const;
    };
    enum class Push : uint32_t { none, receiving, complete, committed, started, failed };

    std::array<Bank, 2> banks;
    uint32_t active;
    uint32_t committed; // what is active after a restart
    Push push;          // of the image that was pushed last
    uint32_t pushed;    // its bank, unless there is none

    uint32_t spare() const { return 1 - active; }
    const Bank &pushed_bank() const { return banks.at(pushed); }
};

// "none" is no text.
std::optional<std::string_view> to_text(Banks::Push push);

// CRC-32 as in Ethernet, of bytes that follow those of `before`.
uint32_t crc32(uint32_t before, std::string_view bytes);

// An ONU whose images were never changed runs that of its first bank, and the second is empty.
Banks banks_of(const Olt &olt, const PonPort &port, const Mac &mac);

// A part of an image on its way to an ONU.
struct ImagePart {
    uint32_t offset;
    uint32_t size;       // of the whole image
    std::string version; // read where the image begins
    std::string_view bytes;
};
Plan push_part(const Olt &olt, const RemoteOnu &onu, const ImagePart &part);
// The image that was pushed is the one that the ONU runs from its next restart on.
Plan commit_image(const Olt &olt, const RemoteOnu &onu);

// The ONU, whose record is about to change, restarts: it runs its committed image.
void start_committed(const Olt &olt, const PonPort &port, const Mac &mac, OnuRecord &record, Change &change);
// The same, with the image of its upgrade run, which takes the place of the one that does not run.
void start_upgraded(const Olt &olt, const PonPort &port, const Mac &mac, const UpgradeRun &run, OnuRecord &record,
                    Change &change);

} // namespace ponsim

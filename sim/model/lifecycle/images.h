// ONUs have two image banks. Images can be pushed to them part by part.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/change/plan.h"
#include "model/olt/olt.h"
#include "model/olt/remote.h"

namespace ponsim
{

inline constexpr uint32_t max_image_size = 16 * 1024 * 1024; // bytes

// Banks are what an ONU has in its image banks, in the form in which it is kept. Banks are counted from 0.
struct Banks {
    struct Bank {
        std::array<char, 20> version = {}; // followed by zeros
        uint32_t valid = 0;                // 1: complete and verified
        uint32_t size = 0;
        uint32_t received = 0;
        uint32_t crc = 0; // CRC-32 of what has been received

        std::string_view name() const { return version.data(); }
        uint32_t percent() const;
    };
    enum class Push : uint32_t { none, receiving, complete, committed, started, failed };

    std::array<Bank, 2> banks;
    uint32_t active;
    uint32_t committed; // the bank that is active after a restart
    Push push;          // state of the image that was pushed last
    uint32_t pushed;    // bank of that image, unless there is none

    uint32_t spare() const { return 1 - active; }
    const Bank &pushed_bank() const { return banks.at(pushed); }
};

// Returns whether an ONU can have these banks.
bool is_good(const Banks &banks);

// Returns no text for "none".
std::optional<std::string_view> to_text(Banks::Push push);

// Returns the CRC-32 of Ethernet of the bytes, which follow the bytes that gave `before`.
uint32_t crc32(uint32_t before, std::string_view bytes);

// An ONU whose images never changed runs the image of its first bank, and its second bank is empty.
Banks banks_of(const Olt &olt, const PonPort &port, const Mac &mac);

// An ImagePart is a part of an image on its way to an ONU.
struct ImagePart {
    uint32_t offset;
    uint32_t size;       // of the whole image
    std::string version; // read from the beginning of the image
    std::string_view bytes;
};
Plan push_part(const Olt &olt, const RemoteOnu &onu, const ImagePart &part);
// Makes the pushed image the one that the ONU runs from its next restart on.
Plan commit_image(const Olt &olt, const RemoteOnu &onu);

// Restarts the ONU, whose record is about to change. It runs its committed image.
void start_committed(const Olt &olt, const PonPort &port, const Mac &mac, OnuRecord &record, Change &change);
// Restarts the ONU as above, but with the image of its upgrade run. That image replaces the one that does not run.
void start_upgraded(const Olt &olt, const PonPort &port, const Mac &mac, const UpgradeRun &run, OnuRecord &record,
                    Change &change);

} // namespace ponsim

// Whether a setting is as a request wanted it, when nobody knows what became of the request.
#pragma once

#include <functional>
#include <optional>

#include "call/record_call.h"

namespace fleet
{

// Returns the request that asks how a setting stands. Returns nothing when the catalogue knows no answer that says it.
std::optional<call::RecordCall> question_about(const call::RecordCall &setting);

// Returns whether the answer to that question shows what the setting wanted.
bool shows(const call::RecordOutcome &answer, const call::RecordCall &question, const call::RecordCall &setting);

} // namespace fleet

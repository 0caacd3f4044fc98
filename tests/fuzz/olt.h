// The OLT that targets begin with: two ports with four ONUs each, those of the first port bound and registered.
#pragma once

#include "engine/simulator.h"

namespace fuzz
{

inline const ponsim::Settings settings{.seed = 1, .ports = 2, .arrivals = 4, .silent = 0};

// Returns an OLT of this kind, which is made only once.
const ponsim::Olt &registered_olt();

// Returns the change that binds an ONU of the first port.
ponsim::Change bind(const ponsim::Olt &olt, const ponsim::Arrival &arrival);

// Lets happen what is overdue. A file may keep something like that, an OLT that runs has nothing of it.
void catch_up(ponsim::Olt &olt);

// Lets time pass, and what is due by then happen, but no more than a few things. Time stops where these end.
void pass(ponsim::Olt &olt, ponsim::ModelTime length);

// Makes a change as the simulator does, but keeps it nowhere.
void make(ponsim::Olt &olt, ponsim::Change change);

} // namespace fuzz

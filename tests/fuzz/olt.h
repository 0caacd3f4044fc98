// The OLT that targets begin with: two ports with four ONUs each, those of the first port bound and registered.
#pragma once

#include "engine/simulator.h"

namespace fuzz
{

inline const ponsim::Settings settings{.seed = 1, .ports = 2, .arrivals = 4, .silent = 0};

// Returns an OLT of this kind, which is made only once.
const ponsim::Olt &registered_olt();

// Lets time pass, and what is due by then happen, but no more than a few things. Time stops where these end.
void pass(ponsim::Olt &olt, ponsim::ModelTime length);

// Makes a change as the simulator does, but keeps it nowhere.
void make(ponsim::Olt &olt, ponsim::Change change);

} // namespace fuzz

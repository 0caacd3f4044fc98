// This file lists the families that the OLT keeps. A change of several families is written in this order.
#pragma once

#include "model/kept/alarm.h"
#include "model/kept/binding.h"
#include "model/kept/blacklist.h"
#include "model/kept/block.h"
#include "model/kept/clock.h"
#include "model/kept/damage.h"
#include "model/kept/entries.h"
#include "model/kept/ledger.h"
#include "model/kept/loid.h"
#include "model/kept/loop.h"
#include "model/kept/loop_detection.h"
#include "model/kept/module.h"
#include "model/kept/onu.h"
#include "model/kept/onu_setting.h"
#include "model/kept/plugged.h"
#include "model/kept/port.h"
#include "model/kept/profile.h"
#include "model/kept/timeline.h"
#include "model/kept/traffic.h"
#include "model/kept/upgrade.h"

namespace ponsim
{

using Kept = Entries<Binding, OnuRecord, PortRecord, BlacklistEntry, LoidPassword, AlarmRecord, AlarmEvent, Block,
                     ModuleRecord, UpgradeType, UpgradeRun, Damage, LoopRecord, LoopDetection, OnuSetting, Profile,
                     Timeline, Offered, Ledger, ModelClock, PluggedOnu, PluggedDevice>;

} // namespace ponsim

#pragma once

#include "UIF/Command.h"

#include <vector>

namespace platform::ui {

// The handlers a command visits from start on, in order: each commander, its
// attached handlers, then its super commander's, without repeats.
std::vector<UIF::CommandHandler*> CommandChain(UIF::Commander* start);

} // namespace platform::ui

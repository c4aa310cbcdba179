#pragma once

#include "ML/AudioOutput.h"

#include <memory>

namespace host {

// The host's sound: the system's default audio output through Qt Multimedia. Open fails when
// the machine has no output device or it refuses the format; playback then runs silently by
// the system clock.
std::unique_ptr<ML::AudioOutput> MakeSystemAudioOutput();

} // namespace host

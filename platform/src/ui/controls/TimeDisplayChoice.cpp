#include "UIF/TimeDisplayChoice.h"

#include "KSL/StationUtils.h"
#include "UIF/HotTimecodeControl.h"

#include <map>
#include <string>

namespace UIF {
namespace {

struct Choice {
    zelmediatypes::TimeDisplay video = zelmediatypes::kTimeDisplay_Unknown;
    zelmediatypes::TimeDisplay audio = zelmediatypes::kTimeDisplay_Unknown;
};

// UI thread only, like every station of the runtime.
std::map<std::string, Choice>& Choices() {
    static std::map<std::string, Choice> choices;
    return choices;
}

Choice ChoiceOn(const KSL::StationID& station) {
    const auto found = Choices().find(std::string(station.View()));
    return found == Choices().end() ? Choice{} : found->second;
}

} // namespace

void AnnounceTimeDisplayChoice(const KSL::StationID& station, zelmediatypes::TimeDisplay display) {
    Choice& choice = Choices()[std::string(station.View())];
    if (zelmediatypes::IsAudioTimeDisplay(display)) {
        choice.audio = display;
        KSL::StationUtils::BroadcastMessage(station,
                                            HotTimecodeAudioTimeDisplayChangedMessage(display));
    } else {
        choice.video = display;
        KSL::StationUtils::BroadcastMessage(station,
                                            HotTimecodeVideoTimeDisplayChangedMessage(display));
    }
}

zelmediatypes::TimeDisplay GetChosenVideoTimeDisplay(const KSL::StationID& station) {
    return ChoiceOn(station).video;
}

zelmediatypes::TimeDisplay GetChosenAudioTimeDisplay(const KSL::StationID& station) {
    return ChoiceOn(station).audio;
}

void ForgetTimeDisplayChoices() {
    Choices().clear();
}

} // namespace UIF

#include "TimeDisplayListener.h"

#include "CaptionsPane.h"
#include "KSL/StationUtils.h"
#include "MessageIds.h"
#include "UIF/HotTimecodeControl.h"

namespace HandlerCaptions {

TimeDisplayListener::TimeDisplayListener(KSL::StationID station, CaptionsPane* pane)
    : station_(std::move(station))
    , pane_(pane) {
    KSL::StationUtils::AddListener(station_, this);
}

TimeDisplayListener::~TimeDisplayListener() {
    KSL::StationUtils::RemoveListener(station_, this);
}

bool TimeDisplayListener::HandleMessage(const KSL::Message& message) {
    const KSL::MessageID id = message.GetMessageID();
    if (id == CachedMessageID<UIF::HotTimecodeVideoTimeDisplayChangedMessage>()) {
        pane_->VideoTimeDisplayChanged(
            station_, static_cast<const UIF::HotTimecodeVideoTimeDisplayChangedMessage&>(message)
                          .GetTimeDisplay());
        return true;
    }
    if (id == CachedMessageID<UIF::HotTimecodeAudioTimeDisplayChangedMessage>()) {
        pane_->AudioTimeDisplayChanged(
            station_, static_cast<const UIF::HotTimecodeAudioTimeDisplayChangedMessage&>(message)
                          .GetTimeDisplay());
        return true;
    }
    return false;
}

} // namespace HandlerCaptions

#pragma once

#include "KSL/ImmutableString.h"
#include "KSL/Listener.h"

namespace HandlerCaptions {

class CaptionsPane;

// Hears the time display a person chooses for the source or for the sequence
// (on one of the two time display stations) and hands it to the pane. Listens
// from construction to destruction.
class TimeDisplayListener : public KSL::Listener {
public:
    TimeDisplayListener(KSL::StationID station, CaptionsPane* pane);
    ~TimeDisplayListener() override;

    const KSL::StationID& GetStationID() const { return station_; }

protected:
    bool HandleMessage(const KSL::Message& message) override;

private:
    KSL::StationID station_;
    CaptionsPane* pane_;
};

} // namespace HandlerCaptions

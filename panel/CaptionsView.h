#pragma once

#include "BE/IProject.h"
#include "KSL/Listener.h"
#include "MZ/CaptionMessages.h"
#include "UIF/TabView.h"

namespace HandlerCaptions {

class CaptionsHandler;

// The Captions panel's tab view. It is made by its handler when the workspace
// asks for the panel, and lives until the panel is closed or the handler goes.
class CaptionsView : public UIF::TabView, public KSL::Listener {
public:
    CaptionsView(CaptionsHandler* handler, KSL::InterfaceRef<BE::IProject> project);
    ~CaptionsView() override;

    CaptionsHandler* GetHandler() const { return handler_; }
    const KSL::InterfaceRef<BE::IProject>& GetProject() const { return project_; }

    // Shows the captions of the opened track item's stream.
    void ShowTrackItem(const MZ::CaptioningTrackItem& item);
    const MZ::CaptioningTrackItem& GetShownTrackItem() const { return shownTrackItem_; }

    void Destroy(std::uint32_t flags) override;

protected:
    bool HandleMessage(const KSL::Message& message) override;

private:
    CaptionsHandler* handler_;
    KSL::InterfaceRef<BE::IProject> project_;
    MZ::CaptioningTrackItem shownTrackItem_;
};

} // namespace HandlerCaptions

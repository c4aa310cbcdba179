#pragma once

#include "BE/IMasterClip.h"
#include "HSL/Handler.h"
#include "KSL/Listener.h"

#include <boost/shared_ptr.hpp>

namespace BE {
class CaptioningStreamFormatModifiedMessage;
}

namespace HandlerCaptions {

class CaptionsView;

// The captions plug-in's per-project object. It owns the panel's window class
// and menu entry, creates the panel's view when the workspace asks, opens the
// panel when the host opens a caption stream, and follows the selected master
// clip so that a change of an open-caption stream's format re-measures its
// captions.
class CaptionsHandler : public HSL::Handler, public KSL::Listener {
public:
    CaptionsHandler(const zelcore::UTF16String& name, KSL::InterfaceRef<BE::IProject> project);
    ~CaptionsHandler() override;

    bool ObeyCommand(const UIF::Command& command) override;
    const char* GetCommandContextName() const override;
    UIF::TabView* CreateTabView(UIF::WorkspaceFrame* frame) override;

    CaptionsView* GetView() const { return view_.get(); }
    const KSL::InterfaceRef<BE::IMasterClip>& GetRememberedClip() const { return rememberedClip_; }

protected:
    bool HandleMessage(const KSL::Message& message) override;

private:
    // Creates or re-animates the panel, shows it and brings it to the front.
    void OpenPanel();
    void TrackMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip);
    void RefreshCaptionSizes(const BE::CaptioningStreamFormatModifiedMessage& message);

    boost::shared_ptr<CaptionsView> view_;
    KSL::InterfaceRef<BE::IMasterClip> rememberedClip_;
};

} // namespace HandlerCaptions

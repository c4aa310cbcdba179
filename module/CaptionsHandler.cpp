#include "CaptionsHandler.h"

#include "BE/StreamMessages.h"
#include "CaptionCommands.h"
#include "CaptionsView.h"
#include "HSL/CaptionRendering.h"
#include "HSL/Ids.h"
#include "KSL/Exception.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/Stations.h"
#include "UIF/WindowClasses.h"
#include "UIF/Workspace.h"
#include "zelcaptioning/CaptionArea.h"
#include "zelcaptioning/StreamFormat.h"

#include <vector>

namespace HandlerCaptions {
namespace {

constexpr const char16_t* kWindowTitle =
    u"$$$/Corvala/Handlers/Captions/CaptionsWindowTitle=Captions";
} // namespace

CaptionsHandler::CaptionsHandler(const zelcore::UTF16String& name,
                                 KSL::InterfaceRef<BE::IProject> project)
    : HSL::Handler(name, std::move(project), HSL::kCaptionsHandlerID) {
    UIF::AddWindowClass(UIF::kCaptionsWindowTypeID, HSL::kCaptionsHandlerID,
                        UIF::kWindowClassType_Panel);
    UIF::AddWindow(UIF::kCaptionsWindowTypeID, UIF::kDefaultWindowID, kWindowTitle,
                   UIF::kDefaultWindowContextID);
    KSL::StationUtils::AddListener(MZ::kStation_ClosedCaptionsActivation, this);
    KSL::StationUtils::AddListener(MZ::kStation_MasterClipActivation, this);
}

CaptionsHandler::~CaptionsHandler() {
    if (rememberedClip_) {
        if (const KSL::StationID station = KSL::StationOf(rememberedClip_); !station.IsNull()) {
            KSL::StationUtils::RemoveListener(station, this);
        }
    }
    KSL::StationUtils::RemoveListener(MZ::kStation_ClosedCaptionsActivation, this);
    KSL::StationUtils::RemoveListener(MZ::kStation_MasterClipActivation, this);
    UIF::RemoveWindowClass(UIF::kCaptionsWindowTypeID);
    if (view_ && view_->IsCreated()) {
        view_->Destroy(UIF::kTabViewDestroy_CloseFrame);
    }
    rememberedClip_ = {};
    view_.reset();
}

const char* CaptionsHandler::GetCommandContextName() const {
    return kCaptionsCommandContext;
}

bool CaptionsHandler::ObeyCommand(const UIF::Command& command) {
    bool handled = false;
    switch (command.GetID()) {
    case UIF::kCommand_Find:
        handled = OnSelectFindBox();
        break;
    case HSL::kCommand_SelectNextPanel:
        handled = OnSelectNextPanel();
        break;
    case HSL::kCommand_SelectPreviousPanel:
        handled = OnSelectPreviousPanel();
        break;
    default:
        break;
    }
    return handled || UIF::CommandHandler::ObeyCommand(command);
}

UIF::TabView* CaptionsHandler::CreateTabView(UIF::WorkspaceFrame* frame) {
    view_.reset(new CaptionsView(this, GetProject()));
    if (view_) {
        view_->Create(HSL::kCaptionsHandlerID, kWindowTitle, frame, true);
        view_->ShowMasterClip(rememberedClip_);
    }
    return view_.get();
}

void CaptionsHandler::OpenPanel() {
    if (!view_ || !view_->IsCreated()) {
        if (UIF::Workspace* workspace = UIF::Workspace::Instance()) {
            workspace->CreateOrReanimateTabView(GetName(), UIF::PropertyList());
        }
    }
    if (view_ && view_->IsCreated()) {
        if (!view_->IsVisible()) {
            view_->Show();
        }
        if (view_->IsVisible() && !view_->IsFrontMost()) {
            view_->BringToFront(true, false);
        }
    }
}

void CaptionsHandler::TrackMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    if (clip == rememberedClip_) {
        return;
    }
    if (rememberedClip_) {
        if (const KSL::StationID station = KSL::StationOf(rememberedClip_); !station.IsNull()) {
            KSL::StationUtils::RemoveListener(station, this);
        }
    }
    rememberedClip_ = clip;
    if (rememberedClip_) {
        if (const KSL::StationID station = KSL::StationOf(rememberedClip_); !station.IsNull()) {
            KSL::StationUtils::AddListener(station, this);
        }
    }
}

void CaptionsHandler::RefreshCaptionSizes(
    const BE::CaptioningStreamFormatModifiedMessage& message) {
    if (!(message.GetMasterClip() == rememberedClip_)) {
        return;
    }
    const KSL::InterfaceRef<BE::ICaptioningStream>& stream = message.GetStream();
    if (!stream) {
        throw KSL::Exception("a caption stream format change names no stream");
    }
    if (!zelcaptioning::IsOpenCaptions(stream->GetStreamFormat())) {
        return;
    }
    const zelcore::geom::RectT<int> frame = rememberedClip_->GetSettings().frameRect;
    const std::int32_t width = zelcaptioning::CaptionAreaExtent(frame.right - frame.left);
    const std::int32_t height = zelcaptioning::CaptionAreaExtent(frame.bottom - frame.top);
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    UIF::WorkspaceWindow* window = workspace ? workspace->GetPtr() : nullptr;
    zelui::drawbot::Drawbot* drawbot = window ? window->GetDrawbot() : nullptr;
    if (!drawbot) {
        return;
    }
    // A snapshot, since each replacement announces itself and may reorder the
    // stream. The new measures are a live update: announced, so every view of
    // the stream follows, but no undo step of their own.
    std::vector<zelcaptioning::CaptionPtr> captions;
    captions.reserve(stream->GetCaptionCount());
    for (std::size_t i = 0; i < stream->GetCaptionCount(); ++i) {
        captions.push_back(stream->GetCaption(i));
    }
    MZ::Captioning captioning(stream);
    for (const zelcaptioning::CaptionPtr& caption : captions) {
        const zelcaptioning::CaptionPtr measured(new zelcaptioning::Caption(*caption));
        HSL::RefreshCaptionSizeInfo(measured, *drawbot);
        measured->UpdateLinePositions(width, height);
        captioning.ReplaceCaption(caption, measured, false, {});
    }
}

bool CaptionsHandler::HandleMessage(const KSL::Message& message) {
    if (const auto* opened = message.As<MZ::ClosedCaptionsOpenedMessage>()) {
        OpenPanel();
        if (view_) {
            view_->ShowStream(opened->GetMasterClip(), opened->GetStream());
        }
        return true;
    }
    if (const auto* opened = message.As<MZ::CaptioningTrackItemOpenedMessage>()) {
        OpenPanel();
        if (view_) {
            view_->ShowTrackItem(opened->GetTrackItem());
        }
        return true;
    }
    if (const auto* selected = message.As<MZ::MasterClipSelectedMessage>()) {
        TrackMasterClip(selected->GetMasterClip());
        return true;
    }
    if (const auto* modified = message.As<BE::CaptioningStreamFormatModifiedMessage>()) {
        RefreshCaptionSizes(*modified);
        return true;
    }
    return false;
}

} // namespace HandlerCaptions

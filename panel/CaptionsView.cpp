#include "CaptionsView.h"

#include "CaptionsPane.h"
#include "CaptionsToolbar.h"
#include "KSL/StationUtils.h"
#include "MZ/Stations.h"
#include "UIF/Colors.h"
#include "UIF/Command.h"
#include "UIF/DC.h"
#include "UIF/ScrollBar.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelui/ui/UI_Events.h"

#include <algorithm>
#include <cmath>

namespace HandlerCaptions {

namespace {

constexpr std::int32_t kPaneGapPx = 7;
constexpr std::int32_t kButtonAreaPx = 40;
constexpr std::int32_t kAddButtonFromRightPx = 192;
constexpr std::int32_t kButtonFromBottomPx = 30;
constexpr std::int32_t kButtonWidthPx = 88;
constexpr std::int32_t kButtonHeightPx = 18;
constexpr std::int32_t kDeleteButtonOffsetPx = 96;
constexpr std::int32_t kStackedExtraHeightPx = 51;

} // namespace

CaptionsView::CaptionsView(CaptionsHandler* handler, KSL::InterfaceRef<BE::IProject> project)
    : UIF::TabView(UIF::ApplicationCommander())
    , handler_(handler)
    , project_(std::move(project)) {}

CaptionsView::~CaptionsView() {
    if (pane_) {
        pane_->DetachView();
    }
}

bool CaptionsView::IsOpenCaptions() const {
    return toolbar_ && toolbar_->IsOpenCaptions();
}

std::int32_t CaptionsView::GetToolbarHeight() const {
    return IsOpenCaptions() ? kOpenCaptionsToolbarHeightPx : kClosedCaptionsToolbarHeightPx;
}

void CaptionsView::OnCreate() {
    EnableDoubleBuffering(true);
    CreateToolbar();
    pane_ = std::make_unique<CaptionsPane>(this);
    AddSubView(*pane_);
    scrollBar_ = std::make_unique<UIF::ScrollBar>(*this);
    scrollBar_->SetOrientation(UIF::kScrollBar_Vertical);
    KSL::StationUtils::AddListener(scrollBar_->GetStationID(), this);
    KSL::StationUtils::AddListener(MZ::kStation_SequenceActivation, this);

    addButton_ = AddButton(u"$$$/Corvala/Handlers/Captions/AddCaption...=+",
                           u"$$$/Corvala/Handlers/Captions/AddCaptionTooltip=Add Caption",
                           &CaptionsPane::AddCaptionAfterCurrent);
    deleteButton_ = AddButton(u"$$$/Corvala/Handlers/Captions/DeleteCaption...=-",
                              u"$$$/Corvala/Handlers/Captions/DeleteCaptionTooltip=Delete Caption",
                              &CaptionsPane::DeleteCurrentCaption);
    RelayoutBody();
    UpdateEnabling();
}

boost::intrusive_ptr<zelui::controls::UI_TextButton>
CaptionsView::AddButton(const char16_t* text, const char16_t* toolTip,
                        void (CaptionsPane::*action)()) {
    boost::intrusive_ptr<zelui::controls::UI_TextButton> button(
        new zelui::controls::UI_TextButton(text));
    button->SetToolTip(toolTip, kToolTipDelayMs);
    button->NotifyWhenChanged([this, action](const auto&) {
        if (pane_) {
            (pane_.get()->*action)();
        }
    });
    AddControl(*button);
    return button;
}

void CaptionsView::DestroySelf() {
    if (pane_) {
        pane_->DetachView();
        pane_.reset();
    }
    if (toolbar_) {
        toolbar_->DestroyButtons();
    }
    for (auto* button : {&addButton_, &deleteButton_}) {
        if (*button) {
            (*button)->SetVisible(false);
            button->reset();
        }
    }
    if (toolbar_) {
        KSL::StationUtils::RemoveListener(toolbar_->ColorPicker().GetStationID(), this);
    }
    if (scrollBar_) {
        KSL::StationUtils::RemoveListener(scrollBar_->GetStationID(), this);
    }
    KSL::StationUtils::RemoveListener(MZ::kStation_SequenceActivation, this);
    // The colour picker goes with the toolbar's other controls.
    toolbar_.reset();
    if (scrollBar_) {
        scrollBar_->Destroy();
        scrollBar_.reset();
    }
    UIF::TabView::DestroySelf();
}

void CaptionsView::Destroy(std::uint32_t) {
    UIF::TabView::Destroy(UIF::kTabViewDestroy_CloseFrame);
}

std::int32_t CaptionsView::GetMinimumStackedHeight() const {
    return CaptionsPane::kRowPitchPx + GetToolbarHeight() + kStackedExtraHeightPx;
}

void CaptionsView::ShowMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    if (pane_) {
        pane_->LoadClip(clip);
    }
}

void CaptionsView::ShowStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                              const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    if (pane_) {
        pane_->ShowStream(clip, stream);
    }
}

void CaptionsView::ShowTrackItem(const MZ::CaptioningTrackItem& item) {
    shownTrackItem_ = item;
    if (pane_) {
        pane_->ShowTrackItem(item);
    }
}

void CaptionsView::BoundsChanged() {
    RelayoutBody();
}

void CaptionsView::RelayoutBody() {
    if (!pane_) {
        return;
    }
    const UIF::Rect client = GetClientRect();
    toolbar_->Relayout(client.Width());
    const std::int32_t barWidth = GetIsStacked() ? 0 : UIF::ScrollBar::GetDefaultSize();
    const UIF::Rect paneRect{client.left, client.top + GetToolbarHeight() + kPaneGapPx,
                             client.right - barWidth, client.bottom - kButtonAreaPx};
    pane_->SetBounds(paneRect);
    scrollBar_->SetBounds(
        UIF::Rect{client.right - barWidth, paneRect.top, client.right, paneRect.bottom});
    if (GetIsStacked()) {
        scrollBar_->Hide();
    } else {
        scrollBar_->Show();
    }
    const std::int32_t addLeft = client.right - kAddButtonFromRightPx;
    const std::int32_t buttonTop = client.bottom - kButtonFromBottomPx;
    addButton_->SetBounds(zelui::controls::UI_Rect::FromSize(
        static_cast<float>(addLeft), static_cast<float>(buttonTop),
        static_cast<float>(kButtonWidthPx), static_cast<float>(kButtonHeightPx)));
    deleteButton_->SetBounds(zelui::controls::UI_Rect::FromSize(
        static_cast<float>(addLeft + kDeleteButtonOffsetPx), static_cast<float>(buttonTop),
        static_cast<float>(kButtonWidthPx), static_cast<float>(kButtonHeightPx)));
    addButton_->SetVisible(true);
    deleteButton_->SetVisible(true);
    UpdateScrollParameters(false);
    Invalidate();
}

// The range is the list's full height and a page the visible part; the
// position stays a whole number of rows.
void CaptionsView::UpdateScrollParameters(bool resetPosition) {
    if (!pane_ || !scrollBar_) {
        return;
    }
    const std::int32_t pitch = CaptionsPane::kRowPitchPx;
    const std::int32_t page = pane_->GetClientRect().Height();
    const std::int32_t content = pane_->GetContentHeight();
    scrollBar_->SetMinimum(0);
    scrollBar_->SetMaximum(content);
    scrollBar_->SetPageSize(page);
    scrollBar_->SetStepSize(pitch);
    if (resetPosition) {
        ScrollTo(0);
        return;
    }
    const std::int32_t maxPosition = std::max(0, content - page);
    if (scrollPositionPx_ > maxPosition) {
        // Back to the greatest whole row that still fills the page.
        ScrollTo((maxPosition + pitch - 1) / pitch * pitch);
    }
}

void CaptionsView::ScrollTo(std::int32_t positionPx) {
    scrollPositionPx_ = std::max(0, positionPx);
    scrollBar_->SetPosition(scrollPositionPx_);
    pane_->SetScrollOffset(static_cast<std::uint32_t>(scrollPositionPx_));
    Invalidate();
}

bool CaptionsView::ScrollByWheel(float notches) {
    if (!scrollBar_ || !pane_) {
        return true;
    }
    const std::int32_t step = scrollBar_->GetStepSize();
    const auto moved = static_cast<std::int32_t>(std::lround(step * notches));
    const std::int32_t maxPosition =
        std::max(0, pane_->GetContentHeight() - pane_->GetClientRect().Height() + step - 1) / step *
        step;
    // The pane's offset is the truth: it may have been scrolled to show a row.
    const auto current = static_cast<std::int32_t>(pane_->GetScrollOffset());
    const std::int32_t position = std::clamp(current - moved, 0, maxPosition);
    if (position != current) {
        ScrollTo(position);
    }
    return true;
}

bool CaptionsView::MouseWheel(const zelui::ui::UI_MouseEvent& event) {
    return ScrollByWheel(event.GetWheelDelta());
}

void CaptionsView::Draw(UIF::DC& dc, const UIF::Rect&) {
    dc.FillRect(GetClientRect(), UIF::kColor_WindowBackground, 255);
}

void CaptionsView::SelectionChanged(std::int32_t index) {
    if (index >= 0 && pane_ && scrollBar_) {
        const std::int32_t pitch = CaptionsPane::kRowPitchPx;
        const std::int32_t visible = pane_->GetClientRect().Height();
        const std::int32_t firstFull = (scrollPositionPx_ + pitch - 1) / pitch;
        const std::int32_t afterLast = (visible + scrollPositionPx_) / pitch;
        if (index >= afterLast) {
            // The row becomes the last one fully shown.
            const std::int32_t needed = (index + 1) * pitch - visible;
            ScrollTo((needed + pitch - 1) / pitch * pitch);
        } else if (index < firstFull) {
            ScrollTo(index * pitch);
        }
    }
    RefreshToolbar();
    if (pane_) {
        pane_->Invalidate();
    }
}

void CaptionsView::RowCountChanged() {
    UpdateScrollParameters(false);
    UpdateEnabling();
    UpdateStackedDimensions(true);
}

bool CaptionsView::HandleMessage(const KSL::Message& message) {
    if (HandleColorPickerMessage(message)) {
        return true;
    }
    if (const auto* scrolled = message.As<UIF::ScrollVerticalMessage>()) {
        if (scrolled->GetPosition() != scrollPositionPx_ && pane_) {
            scrollPositionPx_ = scrolled->GetPosition();
            pane_->SetScrollOffset(static_cast<std::uint32_t>(std::max(0, scrollPositionPx_)));
            Invalidate();
        }
        return true;
    }
    return false;
}

} // namespace HandlerCaptions

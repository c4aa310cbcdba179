// The toolbar's side of the view: what each control does, and how the
// controls follow the stream and the selection.
#include "CaptionsView.h"

#include "CaptionsPane.h"
#include "CaptionsToolbar.h"
#include "MZ/CaptioningStreamQueries.h"
#include "zelcaptioning/StreamFormat.h"

#include <algorithm>
#include <iterator>

namespace HandlerCaptions {

namespace {

bool IsFinal(const zelui::controls::UI_InteractiveControlChangedMessage& message) {
    return message.GetChangeMessage() == zelui::controls::kInteractiveChange_Final;
}

} // namespace

void CaptionsView::CreateToolbar() {
    toolbar_ = std::make_unique<CaptionsToolbar>(*this);
    CaptionsToolbar& bar = *toolbar_;
    auto filter = [this] {
        if (pane_) {
            pane_->SetFilterText(toolbar_->FilterBox().GetText());
        }
    };
    bar.FilterBox().NotifyWhenChanged([filter](const auto&) { filter(); });
    bar.FilterBox().NotifyWhenChangedInteractively([filter](const auto&) { filter(); });
    bar.StreamPopup().NotifyWhenChanged([this](const auto&) {
        const auto& formats = pane_->GetCaptionSource().GetAvailableFormats();
        const std::int32_t item = toolbar_->StreamPopup().GetValue();
        if (item < 0 || item >= static_cast<std::int32_t>(formats.size())) {
            return;
        }
        const auto clip = pane_->GetCurrentClip();
        pane_->ShowStream(
            clip, MZ::CaptioningStreamFromMasterClip(clip, *std::next(formats.begin(), item)));
    });
    bar.TypePopup().NotifyWhenChanged([this](const auto&) {
        const zelcaptioning::CaptionType type =
            toolbar_->CaptionTypeAt(toolbar_->TypePopup().GetValue());
        if (type != zelcaptioning::kCaptionType_None) {
            pane_->SetCaptionType(type);
        }
    });
    bar.FontFamilyPopup().NotifyWhenChanged([this](const auto&) {
        pane_->SetFontFamily(toolbar_->FontFamilyPopup().GetValueString());
    });
    bar.SizeField().NotifyWhenChangedInteractively([this](const auto& message) {
        if (IsFinal(message)) {
            pane_->SetFontSize(static_cast<float>(toolbar_->SizeField().GetValue()));
        }
    });
    bar.EdgeField().NotifyWhenChangedInteractively([this](const auto& message) {
        if (!IsFinal(message)) {
            return;
        }
        const float oldWidth = edgeWidth_;
        edgeWidth_ = static_cast<float>(toolbar_->EdgeField().GetValue());
        pane_->SetEdgeWidth(edgeWidth_);
        // A newly widened edge shows at once in the edge colour.
        if (oldWidth == 0.0f && edgeWidth_ > 0.0f) {
            pane_->SetColor(edgeColor_, kColorTarget_Edge);
        }
    });
    bar.OpenPositionGrid().NotifyWhenChanged([this](const auto&) {
        std::int32_t column = -1;
        std::int32_t row = -1;
        toolbar_->OpenPositionGrid().GetSelection(column, row);
        pane_->SetGridPosition(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row));
    });
    auto place = [this](const auto& message) {
        if (IsFinal(message)) {
            pane_->MoveOpenParagraph(
                std::clamp(toolbar_->XPercentField().GetValue() / 100.0, 0.0, 1.0),
                std::clamp(toolbar_->YPercentField().GetValue() / 100.0, 0.0, 1.0));
        }
    };
    bar.XPercentField().NotifyWhenChangedInteractively(place);
    bar.YPercentField().NotifyWhenChangedInteractively(place);
    TieColorAndPositionControls();
    TieStyleControls();
}

void CaptionsView::StreamChanged(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    const zelcaptioning::StreamFormat format =
        stream ? stream->GetStreamFormat() : zelcaptioning::kStreamFormat_None;
    const bool open = zelcaptioning::IsOpenCaptions(format);
    if (open != toolbar_->IsOpenCaptions()) {
        toolbar_->SetOpenCaptions(open);
        RelayoutBody();
        UpdateStackedDimensions(true);
    }
    toolbar_->ShowStreamFormats(stream ? pane_->GetCaptionSource().GetAvailableFormats()
                                       : std::set<zelcaptioning::StreamFormat>{},
                                format);
    if (stream) {
        toolbar_->ShowCaptionTypes(format, zelcaptioning::kCaptionType_None);
        if (!open) {
            toolbar_->ColumnField().SetMaximum(stream->GetGridColumnCount());
            toolbar_->RowField().SetMaximum(stream->GetGridRowCount());
        }
    }
    toolbar_->FilterBox().SetText({});
    UpdateScrollParameters(true);
    UpdateEnabling();
}

void CaptionsView::RefreshToolbar() {
    // The style first: the weight popup is enabled by the number of weights
    // of the selection's font family, which showing the style lists.
    ShowSelectionStyle();
    UpdateEnabling();
}

void CaptionsView::ShowSelectionStyle() {
    if (!pane_ || !toolbar_) {
        return;
    }
    const zelcaptioning::CaptionPtr caption = pane_->GetItemList().GetCurrentCaption();
    if (!caption) {
        toolbar_->ShowStyle(false, false, false, -1);
        return;
    }
    const caption_editor::StyleSummary style = pane_->GetSelectionStyle();
    toolbar_->ShowStyle(style.bold, style.italic, style.underline, style.alignment);
    toolbar_->ShowCaptionType(caption->GetCaptionType());
    toolbar_->SizeField().SetValue(style.fontSize);
    toolbar_->EdgeField().SetValue(style.edgeWidth);
    toolbar_->OpenPositionGrid().SetSelectionFromAnchor(style.anchor);
    ShowSelectionColors(style);
    if (IsOpenCaptions()) {
        ShowFont(style);
    }
}

void CaptionsView::UpdateEnabling() {
    if (!pane_ || !toolbar_) {
        return;
    }
    const bool hasStream = static_cast<bool>(pane_->GetStream());
    const bool selected = static_cast<bool>(pane_->GetItemList().GetCurrentCaption());
    const bool teletext = zelcaptioning::IsTeletext(pane_->GetCaptionSource().GetChosenFormat());
    CaptionsToolbar::Enabling state;
    state.hasStream = hasStream;
    state.selected = selected;
    state.italicAllowed = !teletext;
    state.underlineAllowed = !teletext;
    state.opacityEditable = colorTarget_ != kColorTarget_Text;
    toolbar_->UpdateEnabling(state);
    addButton_->SetDisabled(!hasStream);
    deleteButton_->SetDisabled(!hasStream || !selected);
}

} // namespace HandlerCaptions

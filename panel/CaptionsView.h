#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/IProject.h"
#include "KSL/Listener.h"
#include "MZ/CaptionMessages.h"
#include "UIF/TabView.h"
#include "caption_editor/StyleSummary.h"
#include "zelcaptioning/CaptioningColor.h"
#include "zelui/controls/UI_TextButton.h"
#include "zelui/ui/UI_Color.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
#include <memory>

namespace UIF {
class ScrollBar;
}

namespace HandlerCaptions {

class CaptionsHandler;
class CaptionsPane;
class CaptionsToolbar;

// The Captions panel's tab view: the style toolbar's place at the top, the
// caption list (CaptionsPane) under it with its vertical scroll bar, and the
// add and delete buttons below. It is made by its handler when the workspace
// asks for the panel, and lives until the panel is closed or the handler goes.
class CaptionsView : public UIF::TabView, public KSL::Listener {
public:
    static constexpr std::int32_t kClosedCaptionsToolbarHeightPx = 52;
    static constexpr std::int32_t kOpenCaptionsToolbarHeightPx = 85;

    CaptionsView(CaptionsHandler* handler, KSL::InterfaceRef<BE::IProject> project);
    ~CaptionsView() override;

    CaptionsHandler* GetHandler() const { return handler_; }
    const KSL::InterfaceRef<BE::IProject>& GetProject() const { return project_; }

    // Shows the captions of a master clip (empty: none).
    void ShowMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip);
    // Shows one stream of a clip (a person opened it).
    void ShowStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                    const KSL::InterfaceRef<BE::ICaptioningStream>& stream);
    // Shows the captions of the opened track item's stream.
    void ShowTrackItem(const MZ::CaptioningTrackItem& item);
    const MZ::CaptioningTrackItem& GetShownTrackItem() const { return shownTrackItem_; }

    CaptionsPane* GetPane() const { return pane_.get(); }
    UIF::ScrollBar* GetScrollBar() const { return scrollBar_.get(); }
    zelui::controls::UI_TextButton* GetAddButton() const { return addButton_.get(); }
    zelui::controls::UI_TextButton* GetDeleteButton() const { return deleteButton_.get(); }
    CaptionsToolbar* GetToolbar() const { return toolbar_.get(); }
    bool IsOpenCaptions() const;
    std::int32_t GetToolbarHeight() const;

    // --- Called by the pane ---
    // A new stream (or none) is shown: the toolbar family follows its format
    // and the list scrolls back to the top.
    void StreamChanged(const KSL::InterfaceRef<BE::ICaptioningStream>& stream);
    // Scrolls the selected row into view and runs the enabling pass.
    void SelectionChanged(std::int32_t index);
    void RefreshToolbar();
    // Enables each control for what the stream, the selection and the colour
    // target allow.
    void UpdateEnabling();
    // Rows were added or removed: the scroll range follows.
    void RowCountChanged();
    void RelayoutBody();
    // Scrolls by wheel notches; true when handled.
    bool ScrollByWheel(float notches);

    // Which colour the colour controls edit.
    enum ColorTarget : std::int32_t {
        kColorTarget_Text = 0,
        kColorTarget_Background = 1,
        kColorTarget_Edge = 2,
    };
    ColorTarget GetColorTarget() const { return colorTarget_; }

    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool& checked, bool& mark,
                           zelcore::UTF16String& text) override;
    bool ObeyCommand(const UIF::Command& command) override;
    void Destroy(std::uint32_t flags) override;
    std::int32_t GetMinimumStackedHeight() const override;

protected:
    void OnCreate() override;
    void DestroySelf() override;
    void BoundsChanged() override;
    void Draw(UIF::DC& dc, const UIF::Rect& updateArea) override;
    bool MouseWheel(const zelui::ui::UI_MouseEvent& event) override;
    bool HandleMessage(const KSL::Message& message) override;

private:
    // Whether the view answers for the command (its own and the edit commands
    // of a focused caption text), and if so whether it is enabled.
    virtual bool FindOwnCommandStatus(UIF::CommandID id, bool& enabled);
    bool ObeyEditCommand(UIF::CommandID id);
    void UpdateScrollParameters(bool resetPosition);
    void ScrollTo(std::int32_t positionPx);
    // Makes the toolbar and ties each control to what it does.
    void CreateToolbar();
    void TieColorAndPositionControls();
    float OpacityOf(ColorTarget target) const;
    void GiveTheEdgeAWidth();
    void ColorPicked(const zelui::ui::UI_Color& color);
    void OpacityChosen(float opacity);
    // The closed-caption block's column and row fields (from 1) were set.
    void GridFieldsChanged(std::int32_t column, std::int32_t row);
    void ShowSelectionColors(const caption_editor::StyleSummary& style);
    bool HandleColorPickerMessage(const KSL::Message& message);
    void TieStyleControls();
    void ShowFont(const caption_editor::StyleSummary& style);
    void WeightChosen(const zelcore::UTF16String& styleName);
    void ShowLegalColors();
    void PickColorInDialog();
    // Shows the selection's style in the toolbar.
    void ShowSelectionStyle();
    // A text button under the list that runs a pane action when clicked.
    boost::intrusive_ptr<zelui::controls::UI_TextButton>
    AddButton(const char16_t* text, const char16_t* toolTip, void (CaptionsPane::*action)());

    CaptionsHandler* handler_;
    KSL::InterfaceRef<BE::IProject> project_;
    MZ::CaptioningTrackItem shownTrackItem_;
    std::unique_ptr<CaptionsToolbar> toolbar_;
    std::unique_ptr<CaptionsPane> pane_;
    std::unique_ptr<UIF::ScrollBar> scrollBar_;
    std::int32_t scrollPositionPx_ = 0;
    boost::intrusive_ptr<zelui::controls::UI_TextButton> addButton_;
    boost::intrusive_ptr<zelui::controls::UI_TextButton> deleteButton_;
    ColorTarget colorTarget_ = kColorTarget_Text;
    // The selection's colours and what the colour controls apply with them.
    zelcaptioning::CaptioningColor textColor_ = zelcaptioning::kCaptioningColor_White;
    zelcaptioning::CaptioningColor backgroundColor_ = zelcaptioning::kCaptioningColor_Transparent;
    zelcaptioning::CaptioningColor edgeColor_ = zelcaptioning::kCaptioningColor_Transparent;
    float textOpacity_ = 1.0f;
    float backgroundOpacity_ = 1.0f;
    float edgeOpacity_ = 0.0f;
    float fontSize_ = 20.0f;
    float edgeWidth_ = 0.0f;
    bool eyedropperActive_ = false;
    // The family whose styles the weight popup lists (-1: none).
    std::int32_t shownFamilyItem_ = -1;
    // The block's column and row (from 1) as the fields last showed them.
    std::int32_t shownColumn_ = 1;
    std::int32_t shownRow_ = 1;
};

} // namespace HandlerCaptions

#pragma once

#include "BE/ICaptioningStream.h"
#include "PositionGridControl.h"
#include "TD/TitlerFontList.h"
#include "UIF/ColorPickerControl.h"
#include "UIF/PictureButton.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelui/controls/UI_Divider.h"
#include "zelui/controls/UI_HotTextNumber.h"
#include "zelui/controls/UI_Popup.h"
#include "zelui/controls/UI_SearchBox.h"
#include "zelui/controls/UI_StaticText.h"
#include "zelui/controls/UI_Swatch.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace HandlerCaptions {

class CaptionsPane;

// How long the pointer rests on one of the panel's controls before its
// tooltip shows.
inline constexpr std::uint32_t kToolTipDelayMs = 400;

// The style toolbar above the caption list, in two families: closed captions
// (52 pixels: caption type, position grid with column and row fields) and
// open captions (85 pixels: font family and weight, size, edge width, open
// position grid with x/y percent fields). Controls of the family not shown are
// hidden. The toolbar owns its controls; what they do is the view's.
class CaptionsToolbar {
public:
    static constexpr std::int32_t kClosedCaptionsHeightPx = 52;
    static constexpr std::int32_t kOpenCaptionsHeightPx = 85;

    // Creates every control on the view, in the order people meet them.
    explicit CaptionsToolbar(UIF::ViewBase& view);
    CaptionsToolbar(const CaptionsToolbar&) = delete;
    CaptionsToolbar& operator=(const CaptionsToolbar&) = delete;
    ~CaptionsToolbar();

    // Takes the ten picture buttons off the view (the view's teardown does
    // this before it stops listening to the colour picker).
    void DestroyButtons();

    std::int32_t GetHeight() const;
    bool IsOpenCaptions() const { return openCaptions_; }
    // Shows the family of the stream's format and places its controls.
    void SetOpenCaptions(bool open);
    void Relayout(std::int32_t widthPx);

    // Greys what does not apply to the loaded stream and the selection.
    struct Enabling {
        bool hasStream = false;
        bool selected = false;
        bool boldAllowed = true;
        bool italicAllowed = true;
        bool underlineAllowed = true;
        bool opacityEditable = false; // false for the text colour target
    };
    void UpdateEnabling(const Enabling& state);

    // Refills the stream popup (one item per offered format, its full label)
    // and the caption type popup (the format's supported types).
    void ShowStreamFormats(const std::set<zelcaptioning::StreamFormat>& formats,
                           zelcaptioning::StreamFormat current);
    void ShowCaptionTypes(zelcaptioning::StreamFormat format, zelcaptioning::CaptionType current);
    // The caption type of a type popup item; kCaptionType_None when none.
    zelcaptioning::CaptionType CaptionTypeAt(std::int32_t item) const;
    void ShowCaptionType(zelcaptioning::CaptionType type);

    // Pressed looks of the style and alignment buttons.
    void ShowStyle(bool bold, bool italic, bool underline, std::int32_t alignment);

    zelui::controls::UI_SearchBox& FilterBox() { return *filterBox_; }
    zelui::controls::UI_Popup& StreamPopup() { return *streamPopup_; }
    zelui::controls::UI_Popup& TypePopup() { return *typePopup_; }
    zelui::controls::UI_Popup& FontFamilyPopup() { return *fontFamilyPopup_; }
    zelui::controls::UI_Popup& FontWeightPopup() { return *fontWeightPopup_; }
    zelui::controls::UI_HotTextNumber& SizeField() { return *sizeField_; }
    zelui::controls::UI_HotTextNumber& EdgeField() { return *edgeField_; }
    zelui::controls::UI_HotTextNumber& OpacityField() { return *opacityField_; }
    zelui::controls::UI_HotTextNumber& ColumnField() { return *columnField_; }
    zelui::controls::UI_HotTextNumber& RowField() { return *rowField_; }
    zelui::controls::UI_HotTextNumber& XPercentField() { return *xPercentField_; }
    zelui::controls::UI_HotTextNumber& YPercentField() { return *yPercentField_; }
    zelui::controls::UI_Swatch& Swatch() { return *swatch_; }
    PositionGridControl& PositionGrid() { return *positionGrid_; }
    PositionGridControl& OpenPositionGrid() { return *openPositionGrid_; }
    UIF::ColorPickerControl& ColorPicker() { return *colorPicker_; }
    // The font families the family popup lists, in its order.
    const std::vector<TD::TitlerFontFamily>& GetFonts() const { return fonts_; }
    // The picture button that sends the command; null for another id.
    UIF::PictureButton* ButtonFor(UIF::CommandID command) const;

private:
    using Control = boost::intrusive_ptr<zelui::controls::UI_ControlView>;
    template <typename T> boost::intrusive_ptr<T> Add(T* control, const char16_t* toolTip);
    boost::intrusive_ptr<zelui::controls::UI_StaticText> Label(const char16_t* text);
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber>
    NumberField(const char16_t* toolTip, std::int32_t decimalPlaces, double value, double minimum,
                double maximum);
    UIF::PictureButton& Button(UIF::DecalID decal, const char16_t* toolTip, UIF::CommandID command);
    void Place(zelui::controls::UI_ControlView& control, std::int32_t x, std::int32_t y,
               std::int32_t width, std::int32_t height);

    UIF::ViewBase& view_;
    std::vector<TD::TitlerFontFamily> fonts_;
    bool openCaptions_ = false;
    std::map<std::int32_t, zelcaptioning::CaptionType> typeOfItem_;

    boost::intrusive_ptr<zelui::controls::UI_SearchBox> filterBox_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> streamLabel_;
    boost::intrusive_ptr<zelui::controls::UI_Popup> streamPopup_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> fontLabel_;
    boost::intrusive_ptr<zelui::controls::UI_Popup> fontFamilyPopup_;
    boost::intrusive_ptr<zelui::controls::UI_Popup> fontWeightPopup_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> sizeLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> sizeField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> edgeLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> edgeField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> typeLabel_;
    boost::intrusive_ptr<zelui::controls::UI_Popup> typePopup_;
    std::vector<std::unique_ptr<UIF::PictureButton>> alignButtons_;
    std::vector<std::unique_ptr<UIF::PictureButton>> styleButtons_;
    std::vector<std::unique_ptr<UIF::PictureButton>> colorButtons_;
    std::vector<boost::intrusive_ptr<zelui::controls::UI_Divider>> dividers_;
    boost::intrusive_ptr<zelui::controls::UI_Swatch> swatch_;
    std::unique_ptr<UIF::ColorPickerControl> colorPicker_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> opacityField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> opacityPercent_;
    boost::intrusive_ptr<PositionGridControl> positionGrid_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> columnLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> columnField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> rowLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> rowField_;
    boost::intrusive_ptr<PositionGridControl> openPositionGrid_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> xLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> xPercentField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> xPercent_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> yLabel_;
    boost::intrusive_ptr<zelui::controls::UI_HotTextNumber> yPercentField_;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> yPercent_;
};

} // namespace HandlerCaptions

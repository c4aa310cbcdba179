#include "CaptionsToolbar.h"

#include "CaptionCommandIds.h"
#include "UIF/ViewBase.h"

namespace HandlerCaptions {

namespace {

constexpr float kDefaultFontSize = 20.0f;

} // namespace

CaptionsToolbar::CaptionsToolbar(UIF::ViewBase& view)
    : view_(view)
    , fonts_(TD::GetTitlerFontList()) {
    using namespace zelui::controls;
    filterBox_ = Add(new UI_SearchBox(),
                     u"$$$/Corvala/Handlers/Captions/FilterTooltop=Filter caption content");
    streamLabel_ = Label(u"$$$/Corvala/Handlers/Captions/Standards=Caption Stream:");
    streamLabel_->SetAlignment(kControlAlignment_Right);
    streamPopup_ =
        Add(new UI_Popup(), u"$$$/Corvala/Handlers/Captions/StandardTooltip=Select caption stream");
    fontLabel_ = Label(u"$$$/Corvala/Handlers/Captions/Font=Font:");
    fontLabel_->SetAlignment(kControlAlignment_Right);
    fontFamilyPopup_ =
        Add(new UI_Popup(), u"$$$/Corvala/Handlers/Captions/FontFamilyTooltip=Select Font Family");
    for (const TD::TitlerFontFamily& family : fonts_) {
        fontFamilyPopup_->AddItem(family.familyName);
    }
    fontWeightPopup_ =
        Add(new UI_Popup(), u"$$$/Corvala/Handlers/Captions/FontWeightTooltip=Select font weight");
    for (UI_Popup* popup : {streamPopup_.get(), fontFamilyPopup_.get(), fontWeightPopup_.get()}) {
        popup->SetItemCheckStyle(true);
        popup->SetDisabled(true);
    }
    sizeLabel_ = Label(u"$$$/Corvala/Handlers/Captions/FontSize=Size:");
    sizeField_ = NumberField(u"$$$/Corvala/Handlers/Captions/FontSizeTooltip=Set Font Size", 0,
                             kDefaultFontSize, 6, 144);
    edgeLabel_ = Label(u"$$$/Corvala/Handlers/Captions/EdgeWidth=Edge:");
    edgeField_ = NumberField(
        u"$$$/Corvala/Handlers/Captions/TextEdgeWidthTooltip=Set Text Edge Width", 1, 0, 0, 24);
    typeLabel_ = Label(u"$$$/Corvala/Handlers/Captions/Type=Type:");
    typeLabel_->SetAlignment(kControlAlignment_Right);
    typePopup_ =
        Add(new UI_Popup(), u"$$$/Corvala/Handlers/Captions/StreamTooltip=Set display style");
    typePopup_->SetItemCheckStyle(true);
    ShowCaptionTypes(zelcaptioning::kStreamFormat_CEA608, zelcaptioning::kCaptionType_None);

    Button(UIF::kCaptionJustifyLeftDecal,
           u"$$$/Corvala/Handlers/Captions/AlignLeftTooltip=Align Left", kCommand_JustifyLeft);
    Button(UIF::kCaptionJustifyCenterDecal,
           u"$$$/Corvala/Handlers/Captions/AlignCenterTooltip=Align Center",
           kCommand_JustifyCenter);
    Button(UIF::kCaptionJustifyRightDecal,
           u"$$$/Corvala/Handlers/Captions/AlignRightTooltip=Align Right", kCommand_JustifyRight);
    dividers_.push_back(Add(new UI_Divider(), nullptr));
    Button(UIF::kCaptionBoldDecal, u"$$$/Corvala/Handlers/Captions/BoldTooltip=Bold",
           kCommand_Bold);
    Button(UIF::kCaptionItalicizeDecal, u"$$$/Corvala/Handlers/Captions/ItalicizeTooltip=Italicize",
           kCommand_Italicize);
    Button(UIF::kCaptionUnderlineDecal, u"$$$/Corvala/Handlers/Captions/UnderlineTooltip=Underline",
           kCommand_Underline);
    Button(UIF::kCaptionMusicNoteDecal,
           u"$$$/Corvala/Handlers/Captions/MusicNoteTooltip=Insert Music Note", kCommand_MusicNote);
    dividers_.push_back(Add(new UI_Divider(), nullptr));
    Button(UIF::kCaptionBackgroundColorDecal,
           u"$$$/Corvala/Handlers/Captions/BackgroundColorTooltip=Background Color",
           kCommand_BackgroundColor);
    Button(UIF::kCaptionTextColorDecal,
           u"$$$/Corvala/Handlers/Captions/TextColorTooltip=Text Color", kCommand_TextColor);
    Button(UIF::kCaptionTextOutlineColorDecal,
           u"$$$/Corvala/Handlers/Captions/TextEdgeColorTooltip=Edge Color", kCommand_EdgeColor);
    swatch_ =
        Add(new UI_Swatch(), u"$$$/Corvala/Handlers/Captions/ColorSwatchTooltip=Choose Color");
    swatch_->SetValue({1.0f, 1.0f, 1.0f, 1.0f});
    swatch_->SetShowBorder(true);
    colorPicker_ = std::make_unique<UIF::ColorPickerControl>(view_);
    colorPicker_->SetAccessibleName(u"$$$/Corvala/Handlers/Captions/ColorPresets=Color Presets");
    // Shows the text colour's opacity as stored (0 to 1) until a colour
    // target is chosen, which shows it in percent.
    opacityField_ =
        NumberField(u"$$$/Corvala/Handlers/Captions/OpacityTooltip=Opacity", 0, 1.0, 0, 100);
    opacityPercent_ = Label(u"$$$/Corvala/Handlers/Captions/UnitPercent=%");
    dividers_.push_back(Add(new UI_Divider(), nullptr));

    positionGrid_ =
        Add(new PositionGridControl(),
            u"$$$/Corvala/Handlers/Captions/PositionGridTooltip=Position Caption Block");
    columnLabel_ = Label(u"$$$/Corvala/Handlers/Captions/x=x:");
    columnField_ =
        NumberField(u"$$$/Corvala/Handlers/Captions/PositionXTooltip=Set Horizontal Position", 0, 1,
                    1, zelcaptioning::GetCaptionColumns(zelcaptioning::kStreamFormat_None, false));
    rowLabel_ = Label(u"$$$/Corvala/Handlers/Captions/y=y:");
    rowField_ =
        NumberField(u"$$$/Corvala/Handlers/Captions/PositionYTooltip=Set Vertical Position", 0, 1,
                    1, zelcaptioning::GetCaptionRows(zelcaptioning::kStreamFormat_None));
    openPositionGrid_ =
        Add(new PositionGridControl(),
            u"$$$/Corvala/Handlers/Captions/OpenPositionGridTooltip=Open Position Caption Block");
    xLabel_ = Label(u"$$$/Corvala/Handlers/Captions/x=x:");
    xPercentField_ = NumberField(
        u"$$$/Corvala/Handlers/Captions/OpenPositionXTooltip=Set Horizontal Position (%)", 2, 0, 0,
        100);
    xPercent_ = Label(u"$$$/Corvala/Handlers/Captions/UnitPercent=%");
    yLabel_ = Label(u"$$$/Corvala/Handlers/Captions/y=y:");
    yPercentField_ =
        NumberField(u"$$$/Corvala/Handlers/Captions/OpenPositionyTooltip=Set Vertical Position (%)",
                    2, 0, 0, 100);
    yPercent_ = Label(u"$$$/Corvala/Handlers/Captions/UnitPercent=%");
}

CaptionsToolbar::~CaptionsToolbar() {
    DestroyButtons();
    colorPicker_->Destroy();
}

void CaptionsToolbar::DestroyButtons() {
    for (auto* buttons : {&alignButtons_, &styleButtons_, &colorButtons_}) {
        for (const std::unique_ptr<UIF::PictureButton>& button : *buttons) {
            button->Destroy();
        }
    }
}

template <typename T>
boost::intrusive_ptr<T> CaptionsToolbar::Add(T* control, const char16_t* toolTip) {
    boost::intrusive_ptr<T> added(control);
    if (toolTip) {
        added->SetToolTip(toolTip, kToolTipDelayMs);
    }
    view_.AddControl(*added);
    return added;
}

boost::intrusive_ptr<zelui::controls::UI_StaticText> CaptionsToolbar::Label(const char16_t* text) {
    return Add(new zelui::controls::UI_StaticText(text), nullptr);
}

boost::intrusive_ptr<zelui::controls::UI_HotTextNumber>
CaptionsToolbar::NumberField(const char16_t* toolTip, std::int32_t decimalPlaces, double value,
                             double minimum, double maximum) {
    auto field = Add(new zelui::controls::UI_HotTextNumber(), toolTip);
    field->SetDecimalPlaces(decimalPlaces);
    field->SetMinimum(minimum);
    field->SetMaximum(maximum);
    field->SetValue(value);
    return field;
}

UIF::PictureButton& CaptionsToolbar::Button(UIF::DecalID decal, const char16_t* toolTip,
                                            UIF::CommandID command) {
    auto button = std::make_unique<UIF::PictureButton>(view_);
    button->SetDecal(decal);
    button->SetToolTip(toolTip, kToolTipDelayMs);
    button->SetCommandID(command);
    auto& group = command <= kCommand_JustifyRight ? alignButtons_
                  : (command == kCommand_BackgroundColor || command == kCommand_TextColor ||
                     command == kCommand_EdgeColor)
                      ? colorButtons_
                      : styleButtons_;
    group.push_back(std::move(button));
    return *group.back();
}

UIF::PictureButton* CaptionsToolbar::ButtonFor(UIF::CommandID command) const {
    for (const auto* buttons : {&alignButtons_, &styleButtons_, &colorButtons_}) {
        for (const std::unique_ptr<UIF::PictureButton>& button : *buttons) {
            if (button->GetCommandID() == command) {
                return button.get();
            }
        }
    }
    return nullptr;
}

std::int32_t CaptionsToolbar::GetHeight() const {
    return openCaptions_ ? kOpenCaptionsHeightPx : kClosedCaptionsHeightPx;
}

void CaptionsToolbar::ShowStreamFormats(const std::set<zelcaptioning::StreamFormat>& formats,
                                        zelcaptioning::StreamFormat current) {
    streamPopup_->RemoveAllItems();
    std::int32_t item = 0;
    for (const zelcaptioning::StreamFormat format : formats) {
        streamPopup_->AddItem(zelcaptioning::GetFullStreamFormatLabel(format));
        if (format == current) {
            streamPopup_->SetValue(item);
        }
        ++item;
    }
}

void CaptionsToolbar::ShowCaptionTypes(zelcaptioning::StreamFormat format,
                                       zelcaptioning::CaptionType current) {
    typeOfItem_.clear();
    typePopup_->RemoveAllItems();
    std::set<zelcaptioning::CaptionType> types;
    if (!zelcaptioning::GetSupportedCaptionTypes(format, types)) {
        return;
    }
    for (const zelcaptioning::CaptionType type : types) {
        typeOfItem_[typePopup_->GetItemCount()] = type;
        typePopup_->AddItem(zelcaptioning::GetCaptionTypeDescription(type));
    }
    ShowCaptionType(current);
}

void CaptionsToolbar::ShowCaptionType(zelcaptioning::CaptionType type) {
    std::int32_t shown = 0;
    for (const auto& [item, itemType] : typeOfItem_) {
        if (itemType == type) {
            shown = item;
        }
    }
    typePopup_->SetValue(typeOfItem_.empty() ? -1 : shown);
}

zelcaptioning::CaptionType CaptionsToolbar::CaptionTypeAt(std::int32_t item) const {
    const auto found = typeOfItem_.find(item);
    return found == typeOfItem_.end() ? zelcaptioning::kCaptionType_None : found->second;
}

void CaptionsToolbar::ShowStyle(bool bold, bool italic, bool underline, std::int32_t alignment) {
    ButtonFor(kCommand_Bold)->SetPressed(bold);
    ButtonFor(kCommand_Italicize)->SetPressed(italic);
    ButtonFor(kCommand_Underline)->SetPressed(underline);
    for (std::size_t i = 0; i < alignButtons_.size(); ++i) {
        alignButtons_[i]->SetPressed(static_cast<std::int32_t>(i) == alignment);
    }
}

} // namespace HandlerCaptions

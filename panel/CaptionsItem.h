#pragma once

#include "KSL/Listener.h"
#include "ML/FrameRequest.h"
#include "RowControls.h"
#include "UIF/Geometry.h"
#include "UIF/HotTimecodeControl.h"
#include "VF/VideoFrame.h"
#include "zelcaptioning/Caption.h"
#include "zelcore/UTF16String.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <memory>

namespace HandlerCaptions {

class CaptionEdit;
class CaptionsPane;

// One row of the caption pane: a caption's in and out times in timecode
// controls and its text in a CaptionEdit. A row holds controls only while it
// is in sight (it borrows them from the pane's pool on layout and gives them
// back when it leaves), so a stream of many captions costs little more than
// its captions.
class CaptionsItem : public KSL::Listener, public std::enable_shared_from_this<CaptionsItem> {
public:
    CaptionsItem(CaptionsPane& pane, zelcaptioning::CaptionPtr caption);
    ~CaptionsItem() override;

    const zelcaptioning::CaptionPtr& GetCaption() const { return caption_; }
    const zelcore::UTF16String& GetPlainText() const { return plainText_; }
    zelmediatypes::TickTime GetInTime() const { return inTime_; }
    zelmediatypes::TickTime GetOutTime() const { return outTime_; }
    zelmediatypes::TickTime GetLastBeginTime() const { return lastBeginTime_; }

    bool HasControls() const { return static_cast<bool>(controls_); }
    // Borrows controls and shows the row's times and text in them.
    void BuildControls();
    // Hides the controls and gives them back to the pane's pool.
    void ReleaseControls();
    // Places the row's controls for a row whose top edge is at rowTopPx in the
    // pane, with the time controls at timeLeftPx; shows them.
    void Layout(std::int32_t rowTopPx, std::int32_t timeLeftPx, std::int32_t rowRightPx);
    void Hide();
    // The row's number in the list (from 0), for the controls' accessible names.
    void SetRowNumber(std::int32_t index);
    void SetSelectedLook(bool selected);

    // Re-reads the times and text from the caption; the text control is only
    // rewritten when its text differs from the caption's by more than its
    // line breaks (CR LF against LF).
    void RefreshFromCaption();
    // Shows the times in the pane's current time display; kTimeDisplay_Unknown
    // leaves the controls as they are.
    void ApplyTimeDisplay();
    // Puts the times back after a refused move, controls included.
    void RestoreTimes(zelmediatypes::TickTime inTime, zelmediatypes::TickTime outTime);

    CaptionEdit* GetTextControl() const { return controls_.text.get(); }
    UIF::HotTimecodeControl* GetInControl() const { return controls_.inTime.get(); }
    UIF::HotTimecodeControl* GetOutControl() const { return controls_.outTime.get(); }
    bool TextHasFocus() const;
    // Gives the text control the focus with an engine range selected
    // (end -1: to the end of the text).
    void StartTextEditing(std::int64_t start, std::int64_t end);
    // The control's selection in engine positions (a line break counts one).
    void GetEngineSelection(std::int64_t& start, std::int64_t& end) const;

    // The text control changed: hands the changed range to the pane.
    void TextChanged();

    // The thumbnail: the frame received for the request of frameTime_.
    struct Thumbnail {
        ML::RequestID requestID = 0;
        zelmediatypes::TickTime requestedTime;
        bool requested = false;
        VF::VideoFrameRef frame;
        // The frame with the open caption drawn on it, made once per frame and caption.
        VF::VideoFrameRef composed;
    };
    Thumbnail& GetThumbnail() { return thumbnail_; }

protected:
    bool HandleMessage(const KSL::Message& message) override;

private:
    void TimeEdited(zelmediatypes::TickTime value, bool isOut);
    void ShowTimes();
    void NameControls();

    CaptionsPane& pane_;
    zelmediatypes::TickTime inTime_;
    zelmediatypes::TickTime outTime_;
    bool reentryGuard_ = false;
    zelmediatypes::TickTime lastBeginTime_;
    RowControls controls_;
    std::int32_t rowNumber_ = -1;
    zelcaptioning::CaptionPtr caption_;
    zelcore::UTF16String plainText_;
    // The control's value as last seen, to find the range a change touched.
    zelcore::UTF16String shownText_;
    Thumbnail thumbnail_;
};

} // namespace HandlerCaptions

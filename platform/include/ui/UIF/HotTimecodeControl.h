#pragma once

#include "KSL/ImmutableString.h"
#include "KSL/Message.h"
#include "UIF/Colors.h"
#include "UIF/Geometry.h"
#include "zelcore/UTF16String.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace UIF {

class ViewBase;

// Stations on which timecode controls announce a time display the user chose
// in their menu, for the source and for the sequence.
inline constexpr const char* kStation_SourceTimeDisplayChanged =
    "timecodeControl.timedisplay.changed.station.source";
inline constexpr const char* kStation_SequenceTimeDisplayChanged =
    "timecodeControl.timedisplay.changed.station.sequence";

// How a timecode control shows times.
struct TimecodeInfo {
    zelmediatypes::TimeDisplay timeDisplay = zelmediatypes::kTimeDisplay_25Timecode;
    // The media's frame, for frame counts and frame alignment.
    zelmediatypes::TickTime frameDuration{zelmediatypes::kTicksPerSecond / 25};
    // Typed and scrubbed times land on frame starts.
    bool alignToFrame = true;
};

// The user set a new time (typed and confirmed, or scrubbed); on GetStationID.
class HotTimecodeChangedMessage : public KSL::MessageOf<HotTimecodeChangedMessage> {
public:
    static constexpr const char* kTypeName = "UIF::HotTimecodeChangedMessage";
    HotTimecodeChangedMessage(zelmediatypes::TickTime time, std::uint32_t flags)
        : time_(time)
        , flags_(flags) {}
    zelmediatypes::TickTime GetTime() const { return time_; }
    // The report flags the control was created with.
    std::uint32_t GetFlags() const { return flags_; }

private:
    zelmediatypes::TickTime time_;
    std::uint32_t flags_;
};

// The text of an inline edit, on every keystroke and when the edit is
// confirmed; on GetTimecodeEditTextStationID.
class HotTimecodeEditTextMessage : public KSL::MessageOf<HotTimecodeEditTextMessage> {
public:
    static constexpr const char* kTypeName = "UIF::HotTimecodeEditTextMessage";
    HotTimecodeEditTextMessage(zelcore::UTF16String text, std::uint32_t flags)
        : text_(std::move(text))
        , flags_(flags) {}
    const zelcore::UTF16String& GetText() const { return text_; }
    std::uint32_t GetFlags() const { return flags_; }

private:
    zelcore::UTF16String text_;
    std::uint32_t flags_;
};

class HotTimecodeVideoTimeDisplayChangedMessage
    : public KSL::MessageOf<HotTimecodeVideoTimeDisplayChangedMessage> {
public:
    static constexpr const char* kTypeName = "UIF::HotTimecodeVideoTimeDisplayChangedMessage";
    explicit HotTimecodeVideoTimeDisplayChangedMessage(zelmediatypes::TimeDisplay display)
        : display_(display) {}
    zelmediatypes::TimeDisplay GetTimeDisplay() const { return display_; }

private:
    zelmediatypes::TimeDisplay display_;
};

class HotTimecodeAudioTimeDisplayChangedMessage
    : public KSL::MessageOf<HotTimecodeAudioTimeDisplayChangedMessage> {
public:
    static constexpr const char* kTypeName = "UIF::HotTimecodeAudioTimeDisplayChangedMessage";
    explicit HotTimecodeAudioTimeDisplayChangedMessage(zelmediatypes::TimeDisplay display)
        : display_(display) {}
    zelmediatypes::TimeDisplay GetTimeDisplay() const { return display_; }

private:
    zelmediatypes::TimeDisplay display_;
};

// A time shown in a time display format. A click opens an inline editor:
// Return or leaving the field confirms a valid label (an invalid one is
// dropped), Escape cancels; a horizontal drag scrubs by frames. The context
// menu chooses the time display; when a display station is set, the choice is
// broadcast there (video or audio message by the kind of display).
class HotTimecodeControl {
public:
    HotTimecodeControl();
    HotTimecodeControl(const HotTimecodeControl&) = delete;
    HotTimecodeControl& operator=(const HotTimecodeControl&) = delete;
    ~HotTimecodeControl();

    // reportFlags are echoed in the control's messages, so one listener can
    // tell several controls apart.
    void Create(ViewBase& parent, const Rect& bounds, zelmediatypes::TickTime time,
                const TimecodeInfo& info, std::uint32_t reportFlags);
    bool IsCreated() const;

    zelmediatypes::TickTime GetTime() const { return time_; }
    // Does not broadcast.
    void SetTime(zelmediatypes::TickTime time);
    void SetTimeDisplay(zelmediatypes::TimeDisplay display, zelmediatypes::TickTime frameDuration,
                        bool alignToFrame);
    const TimecodeInfo& GetTimecodeInfo() const { return info_; }
    void SetTimeDisplayStation(const KSL::StationID& station);

    // Whether the field-advance key (Tab) from the previous control enters it.
    void SetWantsKeyboardFocusFromAdvance(bool wants);
    // The label as shown, or the text being typed while an edit is open.
    zelcore::UTF16String GetInlineEditText() const;
    bool IsEditing() const;
    void SetBackgroundColorID(ColorID color);
    // What assistive technology calls the control (a localisation key or text).
    void SetAccessibleName(const zelcore::UTF16String& name);

    const KSL::StationID& GetStationID() const { return stationID_; }
    const KSL::StationID& GetTimecodeEditTextStationID() const { return editTextStationID_; }

    Rect GetBounds() const;
    void SetBounds(const Rect& bounds);
    bool IsVisible() const;
    void Show();
    void Hide();
    void Destroy();

    // The runtime's side of the control; opaque outside the runtime.
    struct Impl;
    Impl* GetImpl() const { return impl_.get(); }

private:
    friend struct Impl;
    zelcore::UTF16String Label(zelmediatypes::TickTime time) const;
    void CommitTime(zelmediatypes::TickTime time);

    zelmediatypes::TickTime time_;
    TimecodeInfo info_;
    std::uint32_t reportFlags_ = 0;
    KSL::StationID stationID_;
    KSL::StationID editTextStationID_;
    KSL::StationID displayStation_;
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF

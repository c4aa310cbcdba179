#pragma once

#include "KSL/ImmutableString.h"
#include "KSL/Message.h"
#include "UIF/Geometry.h"

#include <cstdint>
#include <memory>

namespace UIF {

class ViewBase;

// The user moved a vertical scroll bar; broadcast on its station.
class ScrollVerticalMessage : public KSL::MessageOf<ScrollVerticalMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ScrollVerticalMessage";
    explicit ScrollVerticalMessage(std::int32_t position)
        : position_(position) {}
    std::int32_t GetPosition() const { return position_; }

private:
    std::int32_t position_;
};

// The horizontal counterpart.
class ScrollHorizontalMessage : public KSL::MessageOf<ScrollHorizontalMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ScrollHorizontalMessage";
    explicit ScrollHorizontalMessage(std::int32_t position)
        : position_(position) {}
    std::int32_t GetPosition() const { return position_; }

private:
    std::int32_t position_;
};

enum ScrollBarOrientation : std::int32_t {
    kScrollBar_Horizontal = 1,
    kScrollBar_Vertical = 2,
};

// A scroll bar over a document of the range minimum..maximum of which a page
// shows at once: the position runs from minimum to maximum - page (minimum
// when the page covers the range). Arrows move by the step, the trough by a
// page. Moves by the user are broadcast on the bar's station; the setters do
// not broadcast.
class ScrollBar {
public:
    static constexpr const char* kInterfaceID = "{C2608A2C-265D-494A-9106-AA8E794703BD}";

    explicit ScrollBar(ViewBase& parent);
    ScrollBar(const ScrollBar&) = delete;
    ScrollBar& operator=(const ScrollBar&) = delete;
    ~ScrollBar();

    // The thickness of a scroll bar in the current style, in pixels.
    static std::int32_t GetDefaultSize();

    // Unique to this bar.
    const KSL::StationID& GetStationID() const { return stationID_; }

    // Starts vertical.
    void SetOrientation(ScrollBarOrientation orientation);
    void SetMinimum(std::int32_t minimum);
    void SetMaximum(std::int32_t maximum);
    void SetPageSize(std::int32_t pageSize);
    void SetStepSize(std::int32_t stepSize);
    // Clamped into the position range.
    void SetPosition(std::int32_t position);

    ScrollBarOrientation GetOrientation() const;
    std::int32_t GetMinimum() const { return minimum_; }
    std::int32_t GetMaximum() const { return maximum_; }
    std::int32_t GetPageSize() const { return pageSize_; }
    std::int32_t GetStepSize() const { return stepSize_; }
    std::int32_t GetPosition() const;

    Rect GetBounds() const;
    void SetBounds(const Rect& bounds);
    bool IsVisible() const;
    void Show();
    void Hide();
    // Takes the bar off its view; it is inert afterwards.
    void Destroy();

    // The runtime's side of the control; opaque outside the runtime.
    struct Impl;
    Impl* GetImpl() const { return impl_.get(); }

private:
    void ApplyRange();

    KSL::StationID stationID_;
    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 0;
    std::int32_t pageSize_ = 0;
    std::int32_t stepSize_ = 1;
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF

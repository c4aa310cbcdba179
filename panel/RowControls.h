#pragma once

#include "CaptionEdit.h"
#include "UIF/HotTimecodeControl.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace HandlerCaptions {

class CaptionsPane;

// The controls that show one row: its In and Out timecodes and its text.
struct RowControls {
    // The out control's report flag, telling its time edits from the in control's.
    static constexpr std::uint32_t kOutTimeFlag = 1;

    std::unique_ptr<UIF::HotTimecodeControl> inTime;
    std::unique_ptr<UIF::HotTimecodeControl> outTime;
    boost::intrusive_ptr<CaptionEdit> text;

    explicit operator bool() const { return text != nullptr; }
};

// Controls of rows that left the pane's sight, kept for the rows that come
// into it: only about a screenful of controls ever exists, however long the
// stream and however far it is scrolled.
class RowControlPool {
public:
    explicit RowControlPool(CaptionsPane& pane)
        : pane_(pane) {}
    RowControlPool(const RowControlPool&) = delete;
    RowControlPool& operator=(const RowControlPool&) = delete;
    ~RowControlPool();

    // A hidden set of controls in the pane: a kept one, or new ones.
    RowControls Take();
    // Keeps the hidden controls for another row.
    void Give(RowControls controls);

    // Takes the controls off the pane for good.
    static void Destroy(RowControls& controls);

private:
    CaptionsPane& pane_;
    std::vector<RowControls> kept_;
};

} // namespace HandlerCaptions

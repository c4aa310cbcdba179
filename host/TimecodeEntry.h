#pragma once

#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;

namespace host {

// A field that shows the playhead in the clip's time display and takes a typed time to jump
// to (Return). A time that cannot be read is kept as typed, and the line beside it says what
// is wrong with it.
class TimecodeEntry : public QWidget {
public:
    using JumpSink = std::function<void(zelmediatypes::TickTime time)>;

    explicit TimecodeEntry(JumpSink jump, QWidget* parent = nullptr);

    // Shows the time, unless the person is typing in the field. A display without labels
    // shows "--".
    void ShowTime(zelmediatypes::TickTime time, zelmediatypes::TimeDisplay display,
                  const zelmediatypes::FrameRate& rate);
    void Clear();

    QLineEdit& GetField() const { return *field_; }
    // What was wrong with the last typed time; empty when it was read.
    QString GetProblem() const;

private:
    void Commit();

    JumpSink jump_;
    QLineEdit* field_;
    QLabel* problem_;
    zelmediatypes::TimeDisplay display_ = zelmediatypes::kTimeDisplay_Unknown;
    zelmediatypes::FrameRate rate_ = zelmediatypes::kFrameRate_2997;
};

} // namespace host

#pragma once

#include <QKeySequenceEdit>

#include <functional>

namespace host {

// Records one shortcut key by its being pressed: each key pressed (with its
// modifiers) replaces the one before and is reported at once, rather than
// growing a sequence of keys that is only reported after a pause.
class KeyRecorder : public QKeySequenceEdit {
public:
    using Recorded = std::function<void(const QKeySequence& key)>;

    explicit KeyRecorder(Recorded recorded, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Recorded recorded_;
};

} // namespace host

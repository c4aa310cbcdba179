#include "KeyRecorder.h"

namespace host {

KeyRecorder::KeyRecorder(Recorded recorded, QWidget* parent)
    : QKeySequenceEdit(parent)
    , recorded_(std::move(recorded)) {}

void KeyRecorder::keyPressEvent(QKeyEvent* event) {
    const QKeySequence before = keySequence();
    QKeySequenceEdit::keyPressEvent(event);
    const QKeySequence sequence = keySequence();
    if (sequence.isEmpty() || sequence == before) {
        // A modifier alone, or a key the editor does not record.
        return;
    }
    const QKeySequence key(sequence[sequence.count() - 1]);
    if (sequence.count() > 1) {
        setKeySequence(key);
    }
    recorded_(key);
}

} // namespace host

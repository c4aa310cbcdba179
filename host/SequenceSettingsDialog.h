#pragma once

#include "BE/SequenceSettings.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace host {

// Edits the settings a user may change of a sequence: its name, its video and
// audio time displays and whether its edited times snap to frames. The picture
// (frame size and rate) is shown as it is.
class SequenceSettingsDialog : public QDialog {
public:
    SequenceSettingsDialog(const BE::SequenceSettings& settings, QWidget* parent = nullptr);

    // The settings as the dialog's fields have them.
    BE::SequenceSettings GetSettings() const;

    QLineEdit& GetNameField() const { return *name_; }
    QComboBox& GetVideoTimeDisplayField() const { return *videoTimeDisplay_; }
    QComboBox& GetAudioTimeDisplayField() const { return *audioTimeDisplay_; }
    QCheckBox& GetFrameAlignmentField() const { return *alignToFrames_; }

private:
    BE::SequenceSettings original_;
    QLineEdit* name_;
    QComboBox* videoTimeDisplay_;
    QComboBox* audioTimeDisplay_;
    QCheckBox* alignToFrames_;
};

} // namespace host

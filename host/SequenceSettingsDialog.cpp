#include "SequenceSettingsDialog.h"

#include "FrameRateText.h"
#include "QtText.h"
#include "TimeDisplayNames.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace host {
namespace {

// A combo box of the displays; a display outside them (unknown, or a number
// this build has no name for) is listed too, so it survives an unchanged OK.
QComboBox* DisplayChoice(std::span<const zelmediatypes::TimeDisplay> displays,
                         zelmediatypes::TimeDisplay current, QWidget* parent) {
    auto* box = new QComboBox(parent);
    for (const zelmediatypes::TimeDisplay display : displays) {
        box->addItem(TimeDisplayName(display), static_cast<int>(display));
    }
    int index = box->findData(static_cast<int>(current));
    if (index < 0) {
        box->addItem(TimeDisplayName(current), static_cast<int>(current));
        index = box->count() - 1;
    }
    box->setCurrentIndex(index);
    return box;
}

} // namespace

SequenceSettingsDialog::SequenceSettingsDialog(const BE::SequenceSettings& settings,
                                               QWidget* parent)
    : QDialog(parent)
    , original_(settings)
    , name_(new QLineEdit(ToQString(settings.name), this))
    , videoTimeDisplay_(DisplayChoice(VideoTimeDisplays(), settings.videoTimeDisplay, this))
    , audioTimeDisplay_(DisplayChoice(AudioTimeDisplays(), settings.audioTimeDisplay, this))
    , alignToFrames_(new QCheckBox(
          Localized("$$$/Corvala/Host/Sequence/AlignToFrames=Snap edited times to frames"), this)) {
    setObjectName(QStringLiteral("sequenceSettingsDialog"));
    setWindowTitle(Localized("$$$/Corvala/Host/Sequence/Title=Sequence Settings"));
    alignToFrames_->setChecked(settings.frameAlignment == BE::FrameAlignment::kAlignedToFrames);
    const auto& rect = settings.frameRect;
    const QString picture = QStringLiteral("%1 × %2, %3 fps")
                                .arg(rect.Width())
                                .arg(rect.Height())
                                .arg(FrameRateText(settings.frameRate));

    auto* form = new QFormLayout(this);
    form->addRow(Localized("$$$/Corvala/Host/Sequence/Name=Name:"), name_);
    form->addRow(Localized("$$$/Corvala/Host/Sequence/Picture=Picture:"),
                 new QLabel(picture, this));
    form->addRow(Localized("$$$/Corvala/Host/Sequence/VideoTime=Video time display:"),
                 videoTimeDisplay_);
    form->addRow(Localized("$$$/Corvala/Host/Sequence/AudioTime=Audio time display:"),
                 audioTimeDisplay_);
    form->addRow(QString(), alignToFrames_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

BE::SequenceSettings SequenceSettingsDialog::GetSettings() const {
    BE::SequenceSettings settings = original_;
    settings.name = ToUTF16(name_->text());
    settings.videoTimeDisplay =
        static_cast<zelmediatypes::TimeDisplay>(videoTimeDisplay_->currentData().toInt());
    settings.audioTimeDisplay =
        static_cast<zelmediatypes::TimeDisplay>(audioTimeDisplay_->currentData().toInt());
    settings.frameAlignment = alignToFrames_->isChecked() ? BE::FrameAlignment::kAlignedToFrames
                                                          : BE::FrameAlignment::kFree;
    return settings;
}

} // namespace host

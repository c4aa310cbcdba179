#include "UIF/MessageBox.h"

#include "UIF/Workspace.h"
#include "input/QtConversions.h"
#include "workspace/WorkspaceImpl.h"
#include "zelcore/Localization.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

namespace UIF {
namespace {

// The innermost recorder, or null when boxes are shown.
MessageBoxRecorder* gActiveRecorder = nullptr;

QMessageBox::StandardButtons ButtonsOf(MBFlag::Type flag) {
    switch (flag) {
    case MBFlag::kOKCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MBFlag::kYesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MBFlag::kYesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MBFlag::kSaveDontSaveCancel:
        return QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon IconOf(MBIcon::Type icon) {
    switch (icon) {
    case MBIcon::kInformation:
        return QMessageBox::Information;
    case MBIcon::kQuestion:
        return QMessageBox::Question;
    case MBIcon::kError:
        return QMessageBox::Critical;
    case MBIcon::kWarning:
        return QMessageBox::Warning;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButton ButtonOf(MBResult::Type result, MBFlag::Type flag) {
    const bool asksToSave = flag == MBFlag::kSaveDontSaveCancel;
    switch (result) {
    case MBResult::kCancel:
        return QMessageBox::Cancel;
    case MBResult::kYes:
        return asksToSave ? QMessageBox::Save : QMessageBox::Yes;
    case MBResult::kNo:
        return asksToSave ? QMessageBox::Discard : QMessageBox::No;
    default:
        return QMessageBox::Ok;
    }
}

MBResult::Type ResultOf(int button, MBResult::Type defaultResult) {
    switch (button) {
    case QMessageBox::Ok:
        return MBResult::kOK;
    case QMessageBox::Cancel:
        return MBResult::kCancel;
    case QMessageBox::Yes:
    case QMessageBox::Save:
        return MBResult::kYes;
    case QMessageBox::No:
    case QMessageBox::Discard:
        return MBResult::kNo;
    default:
        return defaultResult;
    }
}

} // namespace

MessageBoxRecorder::MessageBoxRecorder()
    : outer_(gActiveRecorder) {
    gActiveRecorder = this;
}

MessageBoxRecorder::~MessageBoxRecorder() {
    gActiveRecorder = outer_;
}

MBResult::Type MessageBoxW(const zelcore::UTF16String& text, const zelcore::UTF16String& title,
                           MBFlag::Type flag, MBIcon::Type icon, MBResult::Type defaultResult) {
    if (gActiveRecorder) {
        gActiveRecorder->records_.push_back({zelcore::Localize(zelcore::View(text)),
                                             zelcore::Localize(zelcore::View(title)), flag, icon,
                                             defaultResult});
        return defaultResult;
    }
    Workspace* workspace = Workspace::Instance();
    QMessageBox box(IconOf(icon), platform::ui::Localized(zelcore::View(title)),
                    platform::ui::Localized(zelcore::View(text)), ButtonsOf(flag),
                    workspace ? &workspace->GetImpl().MainWindow() : nullptr);
    if (QAbstractButton* discard = box.button(QMessageBox::Discard)) {
        discard->setText(platform::ui::Localized(u"$$$/Corvala/Dialogs/DontSave=Don't Save"));
    }
    box.setDefaultButton(ButtonOf(defaultResult, flag));
    return ResultOf(box.exec(), defaultResult);
}

} // namespace UIF

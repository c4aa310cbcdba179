#include "FileChooser.h"

#include "HostSettings.h"
#include "QtText.h"

#include <QFileDialog>
#include <QFileInfo>

namespace host {
namespace {

const QString kProjectFolderKey = QStringLiteral("folders/projects");
const QString kMediaFolderKey = QStringLiteral("folders/media");

QString ProjectFilter() {
    return Localized(
        "$$$/Corvala/Host/File/ProjectFilter=Corvala projects (*.json);;All files (*)");
}

// The folder the dialogs of that kind last chose from; empty before the first choice.
QString LastFolder(const QString& key) {
    return OpenHostSettings()->value(key).toString();
}

// Keeps the chosen file's folder for the next dialog of that kind.
QString RememberFolder(const QString& key, const QString& chosenPath) {
    if (!chosenPath.isEmpty()) {
        OpenHostSettings()->setValue(key, QFileInfo(chosenPath).absolutePath());
    }
    return chosenPath;
}

} // namespace

std::string DialogFileChooser::ChooseProjectToOpen(QWidget* parent) {
    return RememberFolder(kProjectFolderKey,
                          QFileDialog::getOpenFileName(
                              parent, Localized("$$$/Corvala/Host/File/OpenTitle=Open Project"),
                              LastFolder(kProjectFolderKey), ProjectFilter()))
        .toStdString();
}

std::string DialogFileChooser::ChooseProjectSavePath(QWidget* parent,
                                                     const std::string& suggestedPath) {
    const QString start = suggestedPath.empty() ? LastFolder(kProjectFolderKey)
                                                : QString::fromStdString(suggestedPath);
    QString path = QFileDialog::getSaveFileName(
        parent, Localized("$$$/Corvala/Host/File/SaveTitle=Save Project As"), start,
        ProjectFilter());
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".json");
    }
    return RememberFolder(kProjectFolderKey, path).toStdString();
}

std::string DialogFileChooser::ChooseMediaToImport(QWidget* parent) {
    return RememberFolder(
               kMediaFolderKey,
               QFileDialog::getOpenFileName(
                   parent, Localized("$$$/Corvala/Host/File/ImportTitle=Import Media"),
                   LastFolder(kMediaFolderKey),
                   Localized("$$$/Corvala/Host/File/MediaFilter=Video files (*.mp4 *.mov *.mkv "
                             "*.avi *.mxf *.webm);;All files (*)")))
        .toStdString();
}

} // namespace host

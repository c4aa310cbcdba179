#include "FileChooser.h"

#include "QtText.h"

#include <QFileDialog>
#include <QFileInfo>

namespace host {
namespace {

QString ProjectFilter() {
    return Localized(
        "$$$/Corvala/Host/File/ProjectFilter=Corvala projects (*.json);;All files (*)");
}

} // namespace

std::string DialogFileChooser::ChooseProjectToOpen(QWidget* parent) {
    return QFileDialog::getOpenFileName(parent,
                                        Localized("$$$/Corvala/Host/File/OpenTitle=Open Project"),
                                        QString(), ProjectFilter())
        .toStdString();
}

std::string DialogFileChooser::ChooseProjectSavePath(QWidget* parent,
                                                     const std::string& suggestedPath) {
    QString path = QFileDialog::getSaveFileName(
        parent, Localized("$$$/Corvala/Host/File/SaveTitle=Save Project As"),
        QString::fromStdString(suggestedPath), ProjectFilter());
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".json");
    }
    return path.toStdString();
}

std::string DialogFileChooser::ChooseMediaToImport(QWidget* parent) {
    return QFileDialog::getOpenFileName(
               parent, Localized("$$$/Corvala/Host/File/ImportTitle=Import Media"), QString(),
               Localized("$$$/Corvala/Host/File/MediaFilter=Video files (*.mp4 *.mov *.mkv *.avi "
                         "*.mxf *.webm);;All files (*)"))
        .toStdString();
}

} // namespace host

// The file dialogs for caption files.
#include "FileChooser.h"

#include "QtText.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

namespace host {
namespace {

using captionformats::CaptionFileFormat;

QString FilterOf(CaptionFileFormat format) {
    QString patterns = "*." + QString::fromUtf8(captionformats::FormatExtension(format));
    if (format == CaptionFileFormat::kTtml) {
        patterns += QStringLiteral(" *.dfxp *.xml");
    }
    return QString::fromUtf8(captionformats::FormatName(format)) + " (" + patterns + ")";
}

} // namespace

std::string FileChooser::ChooseCaptionFileToImport(QWidget*) {
    return {};
}

std::string FileChooser::ChooseCaptionExportPath(QWidget*, const std::string&,
                                                 const std::vector<CaptionFileFormat>&) {
    return {};
}

std::string DialogFileChooser::ChooseCaptionFileToImport(QWidget* parent) {
    QStringList patterns;
    QStringList filters;
    for (const CaptionFileFormat format : captionformats::kAllCaptionFileFormats) {
        filters << FilterOf(format);
        patterns << "*." + QString::fromUtf8(captionformats::FormatExtension(format));
    }
    filters.prepend(
        Localized("$$$/Corvala/Host/File/CaptionFiles=Caption files (%1)").arg(patterns.join(' ')));
    filters << Localized("$$$/Corvala/Host/File/AllFiles=All files (*)");
    return QFileDialog::getOpenFileName(
               parent, Localized("$$$/Corvala/Host/File/ImportCaptionsTitle=Import Captions"),
               QString(), filters.join(";;"))
        .toStdString();
}

std::string
DialogFileChooser::ChooseCaptionExportPath(QWidget* parent, const std::string& suggestedPath,
                                           const std::vector<CaptionFileFormat>& offered) {
    QStringList filters;
    for (const CaptionFileFormat format : offered) {
        filters << FilterOf(format);
    }
    QString chosenFilter = filters.value(0);
    QString path = QFileDialog::getSaveFileName(
        parent, Localized("$$$/Corvala/Host/File/ExportCaptionsTitle=Export Captions"),
        QString::fromStdString(suggestedPath), filters.join(";;"), &chosenFilter);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) {
        const auto index =
            static_cast<std::size_t>(std::max<qsizetype>(filters.indexOf(chosenFilter), 0));
        if (index < offered.size()) {
            path += "." + QString::fromUtf8(captionformats::FormatExtension(offered[index]));
        }
    }
    return path.toStdString();
}

} // namespace host

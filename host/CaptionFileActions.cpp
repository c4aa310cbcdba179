#include "CaptionFileActions.h"

#include "BE/IProject.h"
#include "FileChooser.h"
#include "KSL/Exception.h"
#include "ProjectDocument.h"
#include "ProjectGestures.h"
#include "ProjectPanel.h"
#include "QtText.h"
#include "UIF/MessageBox.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace host {
namespace {

using captionformats::CaptionFileFormat;
using captionformats::Diagnostic;

constexpr std::u16string_view kImportStepName =
    u"$$$/Corvala/Host/ImportCaptions/Step=Import Captions";
// A box lists this many findings and counts the rest.
constexpr std::size_t kListedFindings = 20;

QString FileNameOf(const std::string& pathUtf8) {
    return QFileInfo(QString::fromStdString(pathUtf8)).fileName();
}

QString Listed(const std::vector<Diagnostic>& findings) {
    QString text;
    const std::size_t shown = std::min(findings.size(), kListedFindings);
    for (std::size_t i = 0; i < shown; ++i) {
        text += QString::fromStdString(captionformats::ToString(findings[i])) + '\n';
    }
    if (findings.size() > shown) {
        text += Localized("$$$/Corvala/Host/CaptionFiles/More=...and %1 more.")
                    .arg(findings.size() - shown);
    }
    return text.trimmed();
}

QString StreamLabel(zelcaptioning::StreamFormat format) {
    return ToQString(zelcaptioning::GetFullStreamFormatLabel(format));
}

void ShowWarnings(const QString& text) {
    UIF::MessageBoxW(ToUTF16(text),
                     ToUTF16(Localized("$$$/Corvala/Host/CaptionFiles/Title=Caption File")),
                     UIF::MBFlag::kOK, UIF::MBIcon::kWarning, UIF::MBResult::kOK);
}

} // namespace

CaptionFileActions::CaptionFileActions(ProjectDocument& document, ProjectPanel& panel,
                                       FileChooser& chooser, QWidget* dialogParent,
                                       ProblemReporter reportProblem)
    : document_(document)
    , panel_(panel)
    , chooser_(chooser)
    , dialogParent_(dialogParent)
    , reportProblem_(std::move(reportProblem)) {}

zelcaptioning::StreamFormat CaptionFileActions::StreamFormatFor(CaptionFileFormat format) {
    switch (format) {
    case CaptionFileFormat::kScc:
        return zelcaptioning::kStreamFormat_CEA608;
    case CaptionFileFormat::kEbuStl:
        return zelcaptioning::kStreamFormat_Teletext;
    case CaptionFileFormat::kSrt:
    case CaptionFileFormat::kWebVtt:
    case CaptionFileFormat::kTtml:
        break;
    }
    return zelcaptioning::kStreamFormat_OpenCaptions;
}

std::vector<CaptionFileFormat>
CaptionFileActions::ExportFormatsFor(zelcaptioning::StreamFormat format) {
    switch (format) {
    case zelcaptioning::kStreamFormat_CEA608:
        return {CaptionFileFormat::kScc, CaptionFileFormat::kTtml, CaptionFileFormat::kWebVtt,
                CaptionFileFormat::kSrt};
    case zelcaptioning::kStreamFormat_Teletext:
        return {CaptionFileFormat::kEbuStl, CaptionFileFormat::kTtml, CaptionFileFormat::kWebVtt,
                CaptionFileFormat::kSrt};
    default:
        return {CaptionFileFormat::kTtml, CaptionFileFormat::kWebVtt, CaptionFileFormat::kSrt};
    }
}

bool CaptionFileActions::CanImportCaptions() const {
    return static_cast<bool>(panel_.GetSelectedMasterClip());
}

bool CaptionFileActions::ImportCaptions() {
    const auto clip = panel_.GetSelectedMasterClip();
    if (!clip) {
        return false;
    }
    const std::string path = chooser_.ChooseCaptionFileToImport(dialogParent_);
    return !path.empty() && ImportCaptionFile(path, clip);
}

bool CaptionFileActions::ImportCaptionFile(const std::string& pathUtf8,
                                           const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    const QString fileName = FileNameOf(pathUtf8);
    auto fail = [&](const QString& why) {
        reportProblem_(Localized("$$$/Corvala/Host/ImportCaptions/Failed=The captions of %1 could "
                                 "not be imported.\n\n%2")
                           .arg(fileName, why)
                           .toStdString());
        return false;
    };
    QFile file(QString::fromStdString(pathUtf8));
    if (!file.open(QIODevice::ReadOnly)) {
        return fail(file.errorString());
    }
    const QByteArray bytes = file.readAll();
    const std::string_view content(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const auto format = captionformats::DetectFormat(content, pathUtf8);
    if (!format) {
        return fail(Localized("$$$/Corvala/Host/ImportCaptions/Unknown=Its content is none of "
                              "SubRip, WebVTT, SCC, TTML or EBU STL."));
    }
    captionformats::ReadResult read =
        captionformats::MakeReader(*format)->Read(content, {fileName.toStdString()});
    if (!read.Succeeded()) {
        return fail(Listed(read.errors));
    }
    const zelcaptioning::StreamFormat streamFormat = StreamFormatFor(*format);
    const auto existing = clip->FindCaptioningStream(streamFormat);
    if (existing && existing->GetCaptionCount() > 0 &&
        !ConfirmReplace(existing, read.captions.size(), fileName.toStdString())) {
        return false;
    }
    KSL::InterfaceRef<BE::ICaptioningStream> stream;
    try {
        stream = document_.GetProject()->PutCaptioningStream(
            clip, streamFormat, read.captions, BE::UndoMode::kAsUndoStep, kImportStepName);
    } catch (const KSL::Exception& error) {
        return fail(QString::fromUtf8(error.what()));
    }
    panel_.SelectItem(stream.Get());
    ProjectGestures::AnnounceStreamOpened(stream);
    if (!read.warnings.empty()) {
        ShowWarnings(Localized("$$$/Corvala/Host/ImportCaptions/Warnings=%1 captions of %2 "
                               "(%3) became the clip's %4 stream. The file also held what this "
                               "stream cannot show; it was left out:\n\n%5")
                         .arg(read.captions.size())
                         .arg(fileName, QString::fromUtf8(captionformats::FormatName(*format)),
                              StreamLabel(streamFormat), Listed(read.warnings)));
    }
    return true;
}

bool CaptionFileActions::ConfirmReplace(const KSL::InterfaceRef<BE::ICaptioningStream>& existing,
                                        std::size_t incoming, const std::string& fileName) const {
    const QString question =
        Localized("$$$/Corvala/Host/ImportCaptions/Replace=The clip %1 already has a %2 stream "
                  "of %3 captions. Replace them with the %4 captions of %5?")
            .arg(ToQString(existing->GetMasterClip()->GetName()),
                 StreamLabel(existing->GetStreamFormat()))
            .arg(existing->GetCaptionCount())
            .arg(incoming)
            .arg(QString::fromStdString(fileName));
    return UIF::MessageBoxW(
               ToUTF16(question),
               ToUTF16(Localized("$$$/Corvala/Host/ImportCaptions/Title=Import Captions")),
               UIF::MBFlag::kYesNo, UIF::MBIcon::kQuestion,
               UIF::MBResult::kNo) == UIF::MBResult::kYes;
}

KSL::InterfaceRef<BE::ICaptioningStream> CaptionFileActions::StreamToExport() const {
    if (auto stream = panel_.GetSelectedItem().QueryInterface<BE::ICaptioningStream>()) {
        return stream;
    }
    const auto clip = panel_.GetSelectedMasterClip();
    KSL::InterfaceRef<BE::ICaptioningStream> smallest;
    for (std::size_t i = 0; clip && i < clip->GetCaptioningStreamCount(); ++i) {
        const auto stream = clip->GetCaptioningStream(i);
        if (!smallest || stream->GetStreamFormat() < smallest->GetStreamFormat()) {
            smallest = stream;
        }
    }
    return smallest;
}

bool CaptionFileActions::ExportCaptions() {
    const auto stream = StreamToExport();
    if (!stream) {
        return false;
    }
    const std::vector<CaptionFileFormat> formats = ExportFormatsFor(stream->GetStreamFormat());
    const QString clipName = ToQString(stream->GetMasterClip()->GetName());
    const std::string suggested =
        clipName.isEmpty() ? std::string("captions") : clipName.toStdString();
    const std::string path = chooser_.ChooseCaptionExportPath(
        dialogParent_, suggested + "." + std::string(FormatExtension(formats.front())), formats);
    return !path.empty() && ExportCaptionFile(stream, path);
}

bool CaptionFileActions::ExportCaptionFile(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                                           const std::string& pathUtf8) {
    const QString fileName = FileNameOf(pathUtf8);
    auto fail = [&](const QString& why) {
        reportProblem_(Localized("$$$/Corvala/Host/ExportCaptions/Failed=The captions could not "
                                 "be exported to %1.\n\n%2")
                           .arg(fileName, why)
                           .toStdString());
        return false;
    };
    const std::vector<CaptionFileFormat> formats = ExportFormatsFor(stream->GetStreamFormat());
    const auto named = captionformats::FormatOfFileName(pathUtf8);
    if (!named || std::find(formats.begin(), formats.end(), *named) == formats.end()) {
        QStringList offered;
        for (const CaptionFileFormat format : formats) {
            offered << QString::fromUtf8(captionformats::FormatName(format)) + " (." +
                           QString::fromUtf8(captionformats::FormatExtension(format)) + ")";
        }
        return fail(Localized("$$$/Corvala/Host/ExportCaptions/Format=A %1 stream can be written "
                              "as %2; the file name's extension names none of them.")
                        .arg(StreamLabel(stream->GetStreamFormat()), offered.join(", ")));
    }
    std::vector<zelcaptioning::CaptionPtr> captions;
    captions.reserve(stream->GetCaptionCount());
    for (std::size_t i = 0; i < stream->GetCaptionCount(); ++i) {
        captions.push_back(stream->GetCaption(i));
    }
    captionformats::WriteOptions options;
    options.fileName = fileName.toStdString();
    const zelmediatypes::FrameRate rate = stream->GetMasterClip()->GetSettings().frameRate;
    options.framesPerSecond =
        rate == zelmediatypes::kFrameRate_25 || rate == zelmediatypes::kFrameRate_50 ? 25 : 30;
    const captionformats::WriteResult written =
        captionformats::MakeWriter(*named)->Write(captions, options);
    if (!written.Succeeded()) {
        return fail(Listed(written.errors));
    }
    // The old file stays whole until the new one is complete.
    QSaveFile file(QString::fromStdString(pathUtf8));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(written.bytes.data(), static_cast<qint64>(written.bytes.size())) !=
            static_cast<qint64>(written.bytes.size()) ||
        !file.commit()) {
        return fail(file.errorString());
    }
    if (!written.warnings.empty()) {
        ShowWarnings(Localized("$$$/Corvala/Host/ExportCaptions/Warnings=%1 captions were "
                               "written to %2 (%3), which cannot carry everything they hold:\n\n%4")
                         .arg(captions.size())
                         .arg(fileName, QString::fromUtf8(captionformats::FormatName(*named)),
                              Listed(written.warnings)));
    }
    return true;
}

} // namespace host

#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "captionformats/CaptionFileFormat.h"
#include "zelcaptioning/StreamFormat.h"

#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace host {

class FileChooser;
class ProjectDocument;
class ProjectPanel;

// Caption files in and out of the project. An import reads a file of any
// format the host knows (found from its content), puts its captions into the
// clip as the stream its format belongs to (SCC: CEA-608, EBU STL: teletext,
// the others: open captions) in one undo step, "Import Captions", asking
// before it replaces a stream with captions, and lists in one box what the
// reader skipped. An export writes a stream to a file of a format that can
// carry it, atomically, listing what the format could not carry.
class CaptionFileActions {
public:
    using ProblemReporter = std::function<void(const std::string& problem)>;

    CaptionFileActions(ProjectDocument& document, ProjectPanel& panel, FileChooser& chooser,
                       QWidget* dialogParent, ProblemReporter reportProblem);

    bool CanImportCaptions() const;
    // Into the selected clip.
    bool ImportCaptions();
    bool ImportCaptionFile(const std::string& pathUtf8,
                           const KSL::InterfaceRef<BE::IMasterClip>& clip);

    // The stream an export writes: the selected stream, else the selected
    // clip's stream of the smallest format (the one the Captions panel shows).
    KSL::InterfaceRef<BE::ICaptioningStream> StreamToExport() const;
    bool CanExportCaptions() const { return static_cast<bool>(StreamToExport()); }
    bool ExportCaptions();
    bool ExportCaptionFile(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                           const std::string& pathUtf8);

    // The file formats a stream of the format can be written to, the most
    // faithful first.
    static std::vector<captionformats::CaptionFileFormat>
    ExportFormatsFor(zelcaptioning::StreamFormat format);
    // The stream format a file format's captions become.
    static zelcaptioning::StreamFormat StreamFormatFor(captionformats::CaptionFileFormat format);

private:
    bool ConfirmReplace(const KSL::InterfaceRef<BE::ICaptioningStream>& existing,
                        std::size_t incoming, const std::string& fileName) const;

    ProjectDocument& document_;
    ProjectPanel& panel_;
    FileChooser& chooser_;
    QWidget* dialogParent_;
    ProblemReporter reportProblem_;
};

} // namespace host

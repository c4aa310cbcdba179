#include "CaptionFileDrop.h"

#include "BE/ICaptioningStream.h"
#include "ProjectPanel.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTreeView>
#include <QUrl>

namespace host {
namespace {

// The one local file the drag carries, or an empty string.
QString LocalFileOf(const QMimeData* data) {
    if (!data || data->urls().size() != 1 || !data->urls().front().isLocalFile()) {
        return {};
    }
    return data->urls().front().toLocalFile();
}

} // namespace

CaptionFileDrop::CaptionFileDrop(ProjectPanel& panel, Import import)
    : QObject(&panel)
    , panel_(panel)
    , import_(std::move(import)) {
    QWidget* viewport = panel.GetTreeView().viewport();
    viewport->setAcceptDrops(true);
    viewport->installEventFilter(this);
}

bool CaptionFileDrop::eventFilter(QObject*, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return false;
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QString file = LocalFileOf(drop->mimeData());
    const QModelIndex row = panel_.GetTreeView().indexAt(drop->position().toPoint());
    const KSL::InterfaceRef<BE::IProjectItem> item = panel_.GetModel().ItemAt(row);
    KSL::InterfaceRef<BE::IMasterClip> clip = item.QueryInterface<BE::IMasterClip>();
    if (const auto stream = item.QueryInterface<BE::ICaptioningStream>()) {
        clip = stream->GetMasterClip();
    }
    if (file.isEmpty() || (type != QEvent::DragEnter && !clip)) {
        drop->ignore();
        return true;
    }
    drop->acceptProposedAction();
    if (type == QEvent::Drop) {
        import_(file.toStdString(), clip);
    }
    return true;
}

} // namespace host

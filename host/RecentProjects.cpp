#include "RecentProjects.h"

#include "HostSettings.h"
#include "QtText.h"

#include <QDir>
#include <QFileInfo>

namespace host {
namespace {

const QString kRecentKey = QStringLiteral("recentProjects");

void Store(const QStringList& paths) {
    OpenHostSettings()->setValue(kRecentKey, paths);
}

} // namespace

QStringList RecentProjects() {
    return OpenHostSettings()->value(kRecentKey).toStringList();
}

void NoteRecentProject(const std::string& pathUtf8) {
    if (pathUtf8.empty()) {
        return;
    }
    const QString path = QFileInfo(QString::fromStdString(pathUtf8)).absoluteFilePath();
    QStringList paths = RecentProjects();
    if (!paths.isEmpty() && paths.front() == path) {
        return;
    }
    paths.removeAll(path);
    paths.prepend(path);
    Store(paths.mid(0, kMaxRecentProjects));
}

void ForgetRecentProject(const std::string& pathUtf8) {
    QStringList paths = RecentProjects();
    const QString path = QFileInfo(QString::fromStdString(pathUtf8)).absoluteFilePath();
    if (paths.removeAll(path) > 0) {
        Store(paths);
    }
}

void ClearRecentProjects() {
    Store({});
}

RecentProjectsMenu::RecentProjectsMenu(OpenRequest open, QWidget* parent)
    : QMenu(Localized("$$$/Corvala/Host/Menu/OpenRecent=Open Recent"), parent)
    , open_(std::move(open)) {
    setObjectName(QStringLiteral("openRecentMenu"));
    connect(this, &QMenu::aboutToShow, this, [this] { Refresh(); });
    Refresh();
}

void RecentProjectsMenu::Refresh() {
    clear();
    const QStringList paths = RecentProjects();
    for (int index = 0; index < paths.size(); ++index) {
        const QString& path = paths[index];
        // "&1 name  (folder)": the name to find it by, the folder to tell equal names apart.
        const QFileInfo file(path);
        QAction* action =
            addAction(QStringLiteral("&%1 %2  (%3)")
                          .arg(index + 1)
                          .arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath())));
        action->setToolTip(QDir::toNativeSeparators(path));
        connect(action, &QAction::triggered, this, [this, path] { open_(path.toStdString()); });
    }
    if (paths.isEmpty()) {
        addAction(Localized("$$$/Corvala/Host/Menu/NoRecent=No Recent Projects"))
            ->setEnabled(false);
        return;
    }
    addSeparator();
    addAction(Localized("$$$/Corvala/Host/Menu/ClearRecent=Clear Recent Projects"), this,
              [] { ClearRecentProjects(); });
}

} // namespace host

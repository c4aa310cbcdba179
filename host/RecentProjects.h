#pragma once

#include <QMenu>
#include <QStringList>

#include <functional>
#include <string>

namespace host {

// The project files opened or saved lately, newest first, at most
// kMaxRecentProjects of them, kept in the host settings.
inline constexpr int kMaxRecentProjects = 10;

QStringList RecentProjects();
// Puts the path first (once); an empty path is not a project file and is ignored.
void NoteRecentProject(const std::string& pathUtf8);
void ForgetRecentProject(const std::string& pathUtf8);
void ClearRecentProjects();

// File > Open Recent: the recent projects as they are when the menu opens,
// each by its path, and "Clear Recent Projects".
class RecentProjectsMenu : public QMenu {
public:
    using OpenRequest = std::function<void(const std::string& pathUtf8)>;

    RecentProjectsMenu(OpenRequest open, QWidget* parent = nullptr);

    // Lists the recent projects as they are now; the menu does it as it opens.
    void Refresh();

private:
    OpenRequest open_;
};

} // namespace host

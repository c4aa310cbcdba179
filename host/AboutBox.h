#pragma once

#include <QIcon>
#include <QString>

#include <string>
#include <vector>

namespace host {

// The version of corvala, as the build names it ("0.1.0").
QString HostVersion();

// Help > About: the application's name and version, and the plug-in
// libraries loaded at start (by file name, with their folder), or that none are.
QString AboutText(const std::vector<std::string>& loadedPluginPaths);

// The application's icon: a caption block on a screen, drawn at the sizes
// window managers ask for.
QIcon ApplicationIcon();

} // namespace host

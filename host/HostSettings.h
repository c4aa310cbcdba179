#pragma once

#include <QSettings>

#include <memory>

namespace host {

// What the host remembers between runs (window and docks, file dialog
// folders, recent projects, shortcut changes): one INI file in the user's
// configuration folder, "corvala/corvala.ini". Its folder follows
// QSettings::setPath for the INI format, which the tests point elsewhere.
std::unique_ptr<QSettings> OpenHostSettings();

} // namespace host

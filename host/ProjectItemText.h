#pragma once

#include "BE/IProjectItem.h"

#include <QString>

namespace host {

// The text a project item is listed under: its name, or for a caption stream
// its format and caption count.
QString ProjectItemText(const BE::IProjectItem& item);

} // namespace host

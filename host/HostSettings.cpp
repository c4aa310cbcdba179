#include "HostSettings.h"

namespace host {

std::unique_ptr<QSettings> OpenHostSettings() {
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("corvala"), QStringLiteral("corvala"));
}

} // namespace host

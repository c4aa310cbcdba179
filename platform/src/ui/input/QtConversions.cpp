#include "input/QtConversions.h"

#include "zelcore/Localization.h"

namespace platform::ui {

QString Localized(std::u16string_view keyOrText) {
    const zelcore::UTF16String localized = zelcore::Localize(keyOrText);
    return ToQString(zelcore::View(localized));
}

} // namespace platform::ui

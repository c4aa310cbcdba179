#include "QtText.h"

#include "zelcore/Localization.h"

namespace host {

QString ToQString(const zelcore::UTF16String& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

zelcore::UTF16String ToUTF16(const QString& text) {
    return zelcore::UTF16String(reinterpret_cast<const char16_t*>(text.utf16()),
                                static_cast<std::size_t>(text.size()));
}

QString Localized(std::string_view keyAndDefault) {
    return ToQString(zelcore::Localize(keyAndDefault));
}

} // namespace host

#include "toolkit/LineBreaks.h"

#include <algorithm>

namespace platform::ui {

QString WithCRLFBreaks(const QString& documentText) {
    QString value = documentText;
    return value.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

QString WithDocumentBreaks(const QString& value) {
    QString text = value;
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

std::int64_t ValueOffsetOf(const QString& documentText, std::int64_t position) {
    const auto end = std::clamp<std::int64_t>(position, 0, documentText.size());
    const auto breaks =
        std::count(documentText.begin(), documentText.begin() + end, QLatin1Char('\n'));
    return end + breaks;
}

std::int64_t DocumentPositionOf(const QString& documentText, std::int64_t valueOffset) {
    std::int64_t remaining = std::max<std::int64_t>(valueOffset, 0);
    std::int64_t position = 0;
    while (position < documentText.size() && remaining > 0) {
        const std::int64_t width = documentText[position] == QLatin1Char('\n') ? 2 : 1;
        if (remaining < width) {
            break;
        }
        remaining -= width;
        ++position;
    }
    return position;
}

} // namespace platform::ui

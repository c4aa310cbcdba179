#include "TD/TitlerFontList.h"

#include "input/QtConversions.h"

#include <QFontDatabase>

#include <algorithm>

namespace TD {
namespace {

// Regular faces first, then the other faces, then bold and heavier ones; the
// font database's order within each rank.
int StyleRank(const QString& style) {
    const QString lower = style.toLower();
    if (lower == QLatin1String("regular") || lower == QLatin1String("book") ||
        lower == QLatin1String("normal") || lower == QLatin1String("roman")) {
        return 0;
    }
    if (lower.contains(QLatin1String("bold")) || lower.contains(QLatin1String("black")) ||
        lower.contains(QLatin1String("heavy"))) {
        return 2;
    }
    return 1;
}

} // namespace

std::vector<TitlerFontFamily> GetTitlerFontList() {
    QStringList families = QFontDatabase::families();
    families.removeIf([](const QString& family) {
        return QFontDatabase::isPrivateFamily(family) ||
               QFontDatabase::writingSystems(family).contains(QFontDatabase::Symbol);
    });
    std::sort(families.begin(), families.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    std::vector<TitlerFontFamily> list;
    for (const QString& family : families) {
        QStringList styles = QFontDatabase::styles(family);
        std::stable_sort(styles.begin(), styles.end(), [](const QString& a, const QString& b) {
            return StyleRank(a) < StyleRank(b);
        });
        TitlerFontFamily entry;
        entry.familyName = platform::ui::ToUTF16(family);
        for (const QString& style : styles) {
            entry.styleNames.push_back(platform::ui::ToUTF16(style));
        }
        list.push_back(std::move(entry));
    }
    return list;
}

} // namespace TD

#include "AboutBox.h"

#include "QtText.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>

namespace host {
namespace {

QPixmap IconPixmap(int sizePx) {
    QPixmap pixmap(sizePx, sizePx);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal unit = sizePx / 16.0;
    // A dark screen with two caption lines on black boxes near its foot.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f, 0x4e, 0x79));
    painter.drawRoundedRect(QRectF(0, unit, sizePx, 14 * unit), 2 * unit, 2 * unit);
    painter.setBrush(Qt::black);
    painter.drawRect(QRectF(3 * unit, 8 * unit, 10 * unit, 2.5 * unit));
    painter.drawRect(QRectF(4 * unit, 11 * unit, 8 * unit, 2.5 * unit));
    painter.setBrush(QColor(0xf5, 0xd7, 0x3b));
    painter.drawRect(QRectF(3.75 * unit, 8.75 * unit, 8.5 * unit, unit));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(4.75 * unit, 11.75 * unit, 6.5 * unit, unit));
    return pixmap;
}

} // namespace

QString HostVersion() {
    return QStringLiteral(CORVALA_VERSION);
}

QString AboutText(const std::vector<std::string>& loadedPluginPaths) {
    QString text = Localized("$$$/Corvala/Host/About/Title=Corvala %1, a captioning workbench")
                       .arg(HostVersion());
    if (loadedPluginPaths.empty()) {
        return text + QStringLiteral("\n\n") +
               Localized("$$$/Corvala/Host/About/NoPlugins=No plug-ins are loaded.");
    }
    text += QStringLiteral("\n\n") + Localized("$$$/Corvala/Host/About/Plugins=Plug-ins loaded:");
    for (const std::string& path : loadedPluginPaths) {
        const QFileInfo library(QString::fromStdString(path));
        text += QStringLiteral("\n  %1 (%2)")
                    .arg(library.fileName(), QDir::toNativeSeparators(library.absolutePath()));
    }
    return text;
}

QIcon ApplicationIcon() {
    QIcon icon;
    for (int sizePx : {16, 32, 48, 64, 128, 256}) {
        icon.addPixmap(IconPixmap(sizePx));
    }
    return icon;
}

} // namespace host

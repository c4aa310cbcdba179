#include "Screenshot.h"

#include "HostWindow.h"
#include "SourceMonitor.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QImage>
#include <QMainWindow>
#include <QPixmap>
#include <QThread>

namespace host {

std::optional<std::string> SaveScreenshot(HostWindow& window, const std::string& pngPathUtf8) {
    QMainWindow& mainWindow = window.GetMainWindow();
    mainWindow.show();
    const QDeadlineTimer deadline(10'000);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        if (window.GetSourceMonitor().HasPendingFrame()) {
            QThread::msleep(5);
        }
    } while (window.GetSourceMonitor().HasPendingFrame() && !deadline.hasExpired());
    // Frames and posted messages that arrived last are drawn before the grab.
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);

    const QImage image = mainWindow.grab().toImage();
    if (image.isNull()) {
        return "the main window could not be rendered";
    }
    if (!image.save(QString::fromStdString(pngPathUtf8), "PNG")) {
        return pngPathUtf8 + ": the PNG file could not be written";
    }
    return std::nullopt;
}

} // namespace host

#include "FrameRateText.h"

namespace host {

QString FrameRateText(const zelmediatypes::FrameRate& rate) {
    const double framesPerSecond = static_cast<double>(rate.FramesPerSecondNumerator()) /
                                   static_cast<double>(rate.FramesPerSecondDenominator());
    QString text = QString::number(framesPerSecond, 'f', 3);
    while (text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text;
}

} // namespace host

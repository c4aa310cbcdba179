#include "zelui/drawbot/Drawbot.h"

#include "input/QtConversions.h"
#include "toolkit/DrawbotImpl.h"

#include <QFontDatabase>
#include <QFontMetricsF>

namespace platform::ui {

QFont ToQFont(const zelui::drawbot::FontSpec& font) {
    const QString family = ToQString(zelcore::View(font.family));
    const QString style = ToQString(zelcore::View(font.styleName));
    QFont qfont(family);
    if (!style.isEmpty() && QFontDatabase::styles(family).contains(style)) {
        qfont.setStyleName(style);
    } else {
        qfont.setBold((font.styleFlags & zelui::drawbot::kFontStyle_Bold) != 0);
        qfont.setItalic((font.styleFlags & zelui::drawbot::kFontStyle_Italic) != 0);
    }
    qfont.setUnderline((font.styleFlags & zelui::drawbot::kFontStyle_Underline) != 0);
    qfont.setPixelSize(std::max(1, static_cast<int>(font.sizePixels + 0.5f)));
    qfont.setHintingPreference(QFont::PreferNoHinting);
    return qfont;
}

} // namespace platform::ui

namespace zelui::drawbot {

std::unique_ptr<Drawbot> Drawbot::CreateMeasuring() {
    return std::make_unique<Drawbot>(std::make_unique<Impl>());
}

Drawbot::Drawbot(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

Drawbot::~Drawbot() = default;

TextMetrics Drawbot::MeasureString(std::u16string_view text, const FontSpec& font) const {
    QString line = platform::ui::ToQString(text);
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    const QFontMetricsF metrics(platform::ui::ToQFont(font));
    TextMetrics measured;
    measured.widthPixels = static_cast<float>(metrics.horizontalAdvance(line));
    measured.heightPixels = static_cast<float>(metrics.lineSpacing());
    measured.ascentPixels = static_cast<float>(metrics.ascent());
    measured.descentPixels = static_cast<float>(metrics.descent());
    return measured;
}

void Drawbot::FillRect(const zelcore::geom::RectT<float>& rect, const ui::UI_Color& color) {
    if (impl_->painter) {
        impl_->painter->fillRect(QRectF(rect.left, rect.top, rect.Width(), rect.Height()),
                                 platform::ui::ToQColor(color));
    }
}

void Drawbot::DrawString(std::u16string_view text, const FontSpec& font, float x, float baselineY,
                         const ui::UI_Color& color) {
    if (impl_->painter) {
        impl_->painter->save();
        impl_->painter->setFont(platform::ui::ToQFont(font));
        impl_->painter->setPen(platform::ui::ToQColor(color));
        impl_->painter->drawText(QPointF(x, baselineY), platform::ui::ToQString(text));
        impl_->painter->restore();
    }
}

} // namespace zelui::drawbot

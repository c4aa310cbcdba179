#pragma once

#include "zelui/drawbot/Drawbot.h"

#include <QFont>
#include <QPainter>

namespace zelui::drawbot {

struct Drawbot::Impl {
    // Null for a measuring surface.
    QPainter* painter = nullptr;
};

} // namespace zelui::drawbot

namespace platform::ui {

QFont ToQFont(const zelui::drawbot::FontSpec& font);

} // namespace platform::ui

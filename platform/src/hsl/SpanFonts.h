#pragma once

#include "zelcaptioning/TextSpanAttributes.h"
#include "zelui/drawbot/Drawbot.h"

namespace HSL::detail {

// The font a span is measured and drawn in.
zelui::drawbot::FontSpec FontOf(const zelcaptioning::TextSpanAttributes& attributes);

} // namespace HSL::detail

#include "zelui/controls/UI_PopupMenu.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"

#include <QMenu>
#include <QPainter>
#include <QPixmap>

namespace zelui::controls {
namespace {

QIcon SwatchIcon(const ui::UI_Color& color) {
    QPixmap patch(12, 12);
    patch.fill(platform::ui::ToQColor(color));
    QPainter painter(&patch);
    painter.setPen(Qt::gray);
    painter.drawRect(patch.rect().adjusted(0, 0, -1, -1));
    return QIcon(patch);
}

} // namespace

std::int32_t UI_DoPopupMenu(const std::vector<UI_MenuItem>& items, const UI_ControlView& anchor) {
    QWidget* anchorWidget = platform::ui::WidgetOfControl(anchor);
    QMenu menu(anchorWidget);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const UI_MenuItem& item = items[index];
        if (item.flags & kMenuItem_Separator) {
            menu.addSeparator();
            continue;
        }
        QAction* action = menu.addAction(platform::ui::Localized(zelcore::View(item.text)));
        action->setData(static_cast<int>(index));
        action->setCheckable((item.flags & kMenuItem_Checked) != 0);
        action->setChecked((item.flags & kMenuItem_Checked) != 0);
        action->setEnabled((item.flags & kMenuItem_Disabled) == 0);
        if (item.swatch) {
            action->setIcon(SwatchIcon(*item.swatch));
        }
    }
    const QPoint at = anchorWidget ? anchorWidget->mapToGlobal(QPoint(0, anchorWidget->height()))
                                   : QCursor::pos();
    const QAction* chosen = menu.exec(at);
    return chosen ? chosen->data().toInt() : -1;
}

} // namespace zelui::controls

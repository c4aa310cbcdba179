#include "DLG/ColorPickerDialog.h"

#include "UIF/Workspace.h"
#include "input/QtConversions.h"
#include "workspace/WorkspaceImpl.h"

#include <QColorDialog>

namespace DLG {

bool ColorPickerDialog::PickColor(const zelui::ui::UI_Color& initialColor,
                                  zelui::ui::UI_Color& chosenColor) {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    QColorDialog dialog(platform::ui::ToQColor(initialColor),
                        workspace ? &workspace->GetImpl().MainWindow() : nullptr);
    dialog.setWindowTitle(
        platform::ui::Localized(u"$$$/Corvala/Dialogs/ColorPickerTitle=Choose a Color"));
    // The platform's own dialog cannot be driven by the host's tests or styled.
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    QColor chosen = dialog.selectedColor();
    chosen.setAlpha(255);
    chosenColor = platform::ui::ToUIColor(chosen);
    return true;
}

} // namespace DLG

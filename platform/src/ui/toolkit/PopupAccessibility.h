#pragma once

class QComboBox;

namespace platform::ui {

// Qt names a combo box after its current item on this platform, expecting a
// label beside it to name it; a toolkit popup is named by its own accessible
// name (its tooltip) instead, and reports its current item as its value.
// Installs the interface factory on first use.
void NameComboBoxByItsOwnName(QComboBox& combo);

} // namespace platform::ui

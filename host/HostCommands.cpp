#include "HostCommands.h"

#include "UIF/ShortcutManager.h"
#include "zelcore/UTF16String.h"

#include <array>

namespace host {
namespace {

// Delete has no default key: it would take the key from every text field
// outside the panels.
constexpr std::array kGlobalCommands{
    GlobalCommand{"cmd.file.new", kHostCommand_NewProject,
                  "$$$/Corvala/Host/Command/New=New project", "Ctrl+N"},
    GlobalCommand{"cmd.file.open", kHostCommand_OpenProject,
                  "$$$/Corvala/Host/Command/Open=Open a project file", "Ctrl+O"},
    GlobalCommand{"cmd.file.save", kHostCommand_SaveProject,
                  "$$$/Corvala/Host/Command/Save=Save the project", "Ctrl+S"},
    GlobalCommand{"cmd.file.saveas", kHostCommand_SaveProjectAs,
                  "$$$/Corvala/Host/Command/SaveAs=Save the project to another file",
                  "Ctrl+Shift+S"},
    GlobalCommand{"cmd.file.import", kHostCommand_ImportMedia,
                  "$$$/Corvala/Host/Command/Import=Import a media file as a master clip", "Ctrl+I"},
    GlobalCommand{"cmd.file.importcaptions", kHostCommand_ImportCaptions,
                  "$$$/Corvala/Host/Command/ImportCaptions=Import a caption file into the "
                  "selected clip",
                  nullptr},
    GlobalCommand{"cmd.file.exportcaptions", kHostCommand_ExportCaptions,
                  "$$$/Corvala/Host/Command/ExportCaptions=Export the selected caption stream "
                  "to a file",
                  nullptr},
    GlobalCommand{"cmd.file.closeclip", kHostCommand_CloseClip,
                  "$$$/Corvala/Host/Command/CloseClip=Close the selected master clip", nullptr},
    GlobalCommand{"cmd.file.newsequence", kHostCommand_NewSequence,
                  "$$$/Corvala/Host/Command/NewSequence=New sequence", nullptr},
    GlobalCommand{"cmd.help.about", kHostCommand_About,
                  "$$$/Corvala/Host/Command/About=About Corvala", nullptr},
    GlobalCommand{"cmd.file.quit", kHostCommand_Quit, "$$$/Corvala/Host/Command/Quit=Quit",
                  "Ctrl+Q"},
    GlobalCommand{"cmd.edit.undo", UIF::kCommand_Undo, "$$$/Corvala/Host/Command/Undo=Undo",
                  "Ctrl+Z"},
    GlobalCommand{"cmd.edit.redo", UIF::kCommand_Redo, "$$$/Corvala/Host/Command/Redo=Redo",
                  "Ctrl+Shift+Z"},
    GlobalCommand{"cmd.edit.redo.alternative", UIF::kCommand_Redo,
                  "$$$/Corvala/Host/Command/RedoAlternative=Redo (second key)", "Ctrl+Y"},
    GlobalCommand{"cmd.edit.cut", UIF::kCommand_Cut, "$$$/Corvala/Host/Command/Cut=Cut", "Ctrl+X"},
    GlobalCommand{"cmd.edit.copy", UIF::kCommand_Copy, "$$$/Corvala/Host/Command/Copy=Copy",
                  "Ctrl+C"},
    GlobalCommand{"cmd.edit.paste", UIF::kCommand_Paste, "$$$/Corvala/Host/Command/Paste=Paste",
                  "Ctrl+V"},
    GlobalCommand{"cmd.edit.delete", UIF::kCommand_Delete, "$$$/Corvala/Host/Command/Delete=Delete",
                  nullptr},
    GlobalCommand{"cmd.edit.selectall", UIF::kCommand_SelectAll,
                  "$$$/Corvala/Host/Command/SelectAll=Select All", "Ctrl+A"},
    GlobalCommand{"cmd.playback.playcaption", kHostCommand_PlaySelectedCaption,
                  "$$$/Corvala/Host/Command/PlayCaption=Play the selected caption from its begin "
                  "to its end",
                  "Ctrl+Shift+Space"},
    GlobalCommand{"cmd.edit.shortcuts", kHostCommand_KeyboardShortcuts,
                  "$$$/Corvala/Host/Command/Shortcuts=Keyboard shortcuts", "Ctrl+Alt+K"},
};

} // namespace

std::span<const GlobalCommand> GlobalCommands() {
    return kGlobalCommands;
}

void DeclareGlobalCommands(UIF::ShortcutManager* manager) {
    UIF::CommandContext* global = manager->GetContext("global");
    for (const GlobalCommand& command : kGlobalCommands) {
        global->DeclareCommand(command.name, command.id, 0, zelcore::ToUTF16(command.description),
                               command.defaultKey ? KSL::ImmutableString(command.defaultKey)
                                                  : KSL::ImmutableString(),
                               false);
    }
}

} // namespace host

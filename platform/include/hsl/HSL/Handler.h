#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"
#include "UIF/Command.h"
#include "UIF/TabView.h"
#include "zelcore/UTF16String.h"

#include <vector>

namespace HSL {

// Command ids of the host's panel navigation, handled by every handler.
inline constexpr UIF::CommandID kCommand_SelectNextPanel = 11916;
inline constexpr UIF::CommandID kCommand_SelectPreviousPanel = 11917;

// A plug-in's per-project object: it creates the plug-in's panel (as the
// workspace's tab-view creator under its name) and handles the commands the
// panel does not. The host makes one per open project through the factory the
// plug-in registered, and destroys it when the project closes.
class Handler : public UIF::CommandHandler, public UIF::TabViewCreator {
public:
    using Factory = Handler* (*)(const zelcore::UTF16String& name,
                                 KSL::InterfaceRef<BE::IProject> project);

    // Registers with the workspace (when there is one) as the creator of the
    // tab views named `name`.
    Handler(const zelcore::UTF16String& name, KSL::InterfaceRef<BE::IProject> project,
            const zelcore::UTF16String& handlerID);
    ~Handler() override;

    const zelcore::UTF16String& GetName() const { return name_; }
    const zelcore::UTF16String& GetHandlerID() const { return handlerID_; }
    const KSL::InterfaceRef<BE::IProject>& GetProject() const { return project_; }

    // Whether the project may close now; true unless a handler objects.
    virtual bool AllowClose();
    // Puts the focus into the panel's find field; false when it has none.
    virtual bool OnSelectFindBox();
    // Brings the workspace's next (or previous) open panel to the front with the
    // focus, counting from the panel that has the focus; false when there is no
    // other open panel.
    virtual bool OnSelectNextPanel();
    virtual bool OnSelectPreviousPanel();

    static void RegisterFactory(const zelcore::UTF16String& handlerID, Factory factory);
    static void UnregisterFactory(const zelcore::UTF16String& handlerID);
    static Factory FindFactory(const zelcore::UTF16String& handlerID);
    static std::vector<zelcore::UTF16String> GetRegisteredHandlerIDs();

private:
    bool SelectPanel(int step);

    zelcore::UTF16String name_;
    KSL::InterfaceRef<BE::IProject> project_;
    zelcore::UTF16String handlerID_;
};

} // namespace HSL

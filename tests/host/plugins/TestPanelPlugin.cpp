// A plug-in with a module and a handler whose window class opens an empty
// panel, as a real plug-in is shaped.
#include "HSL/Handler.h"
#include "HSL/Module.h"
#include "HSL/PluginExport.h"
#include "UIF/TabView.h"
#include "UIF/WindowClasses.h"

#include <memory>

CORVALA_DECLARE_PLUGIN()

namespace {

const zelcore::UTF16String kModuleID = u"Corvala.Test.PanelModule";
const zelcore::UTF16String kHandlerID = u"Corvala.Test.PanelHandler";
constexpr const char* kWindowTypeID = "window.testpanel";

class TestPanelView : public UIF::TabView {
public:
    using UIF::TabView::TabView;
};

class TestPanelHandler : public HSL::Handler {
public:
    TestPanelHandler(const zelcore::UTF16String& name, KSL::InterfaceRef<BE::IProject> project)
        : HSL::Handler(name, std::move(project), kHandlerID) {
        UIF::AddWindowClass(kWindowTypeID, kHandlerID, UIF::kWindowClassType_Panel);
        UIF::AddWindow(kWindowTypeID, UIF::kDefaultWindowID, u"Test Panel",
                       UIF::kDefaultWindowContextID);
    }
    ~TestPanelHandler() override {
        UIF::RemoveWindowClass(kWindowTypeID);
        if (view_ && view_->IsCreated()) {
            view_->Destroy(UIF::kTabViewDestroy_CloseFrame);
        }
    }

    UIF::TabView* CreateTabView(UIF::WorkspaceFrame* frame) override {
        view_ = std::make_unique<TestPanelView>(nullptr);
        view_->Create(kHandlerID, u"Test Panel", frame, true);
        return view_.get();
    }

private:
    std::unique_ptr<TestPanelView> view_;
};

HSL::Module* CreateModule(const zelcore::UTF16String& modulePath) {
    return new HSL::Module(modulePath);
}

HSL::Handler* CreateHandler(const zelcore::UTF16String& name,
                            KSL::InterfaceRef<BE::IProject> project) {
    return new TestPanelHandler(name, std::move(project));
}

const bool kRegistered = [] {
    HSL::Module::RegisterFactory(kModuleID, CreateModule);
    HSL::Handler::RegisterFactory(kHandlerID, CreateHandler);
    return true;
}();

} // namespace

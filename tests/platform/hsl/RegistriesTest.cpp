#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "HSL/Module.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

HSL::Module* MakeModule(const zelcore::UTF16String& path) {
    return new HSL::Module(path);
}

class PanelHandler : public HSL::Handler {
public:
    using HSL::Handler::Handler;
    UIF::TabView* CreateTabView(UIF::WorkspaceFrame*) override { return nullptr; }
};

HSL::Handler* MakeHandler(const zelcore::UTF16String& name,
                          KSL::InterfaceRef<BE::IProject> project) {
    return new PanelHandler(name, std::move(project), u"test.handler");
}

} // namespace

TEST(Registries, FactoriesAreFoundByIdUntilUnregistered) {
    EXPECT_EQ(HSL::Module::FindFactory(u"test.module"), nullptr);
    HSL::Module::RegisterFactory(u"test.module", MakeModule);
    HSL::Handler::RegisterFactory(u"test.handler", MakeHandler);
    ASSERT_EQ(HSL::Module::FindFactory(u"test.module"), &MakeModule);
    EXPECT_EQ(HSL::Handler::FindFactory(u"test.module"), nullptr) << "separate registries";
    const auto ids = HSL::Module::GetRegisteredModuleIDs();
    EXPECT_NE(std::find(ids.begin(), ids.end(), zelcore::UTF16String(u"test.module")), ids.end());

    std::unique_ptr<HSL::Module> module(HSL::Module::FindFactory(u"test.module")(u"/plugins/x.so"));
    EXPECT_EQ(module->GetModulePath(), zelcore::UTF16String(u"/plugins/x.so"));

    const KSL::InterfaceRef<BE::IProject> project = BE::CreateProject();
    std::unique_ptr<HSL::Handler> handler(
        HSL::Handler::FindFactory(u"test.handler")(u"Panel", project));
    EXPECT_EQ(handler->GetName(), zelcore::UTF16String(u"Panel"));
    EXPECT_EQ(handler->GetProject(), project);
    EXPECT_TRUE(handler->AllowClose());
    EXPECT_FALSE(handler->OnSelectFindBox());
    EXPECT_FALSE(handler->OnSelectNextPanel()) << "no other panel is open";

    HSL::Module::UnregisterFactory(u"test.module");
    HSL::Handler::UnregisterFactory(u"test.handler");
    EXPECT_EQ(HSL::Module::FindFactory(u"test.module"), nullptr);
    EXPECT_EQ(HSL::Handler::FindFactory(u"test.handler"), nullptr);
    EXPECT_NE(HSL::kCaptionsModuleID, HSL::kCaptionsHandlerID);
}

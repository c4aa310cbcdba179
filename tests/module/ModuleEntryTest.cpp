#include "CaptionCommands.h"
#include "CaptionsModule.h"

#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "UIF/ShortcutManager.h"

#include <gtest/gtest.h>

#include <memory>

TEST(ModuleEntry, LoadingRegistersBothFactories) {
    EXPECT_EQ(HSL::Module::FindFactory(HSL::kCaptionsModuleID), &HandlerCaptions::CreateModule);
    EXPECT_NE(HSL::Handler::FindFactory(HSL::kCaptionsHandlerID), nullptr);
}

TEST(ModuleEntry, CreateModuleDeclaresTheCaptionsContextWithItsTenCommands) {
    std::unique_ptr<HSL::Module> module(
        HandlerCaptions::CreateModule(u"/plugins/libHandlerCaptions.so"));
    ASSERT_TRUE(module);
    EXPECT_EQ(module->GetModulePath(), zelcore::UTF16String(u"/plugins/libHandlerCaptions.so"));

    UIF::ShortcutManager* shortcuts = UIF::ShortcutManager::Instance();
    shortcuts->BuildShortcutTables(); // declaring twice keeps one set of commands
    const UIF::CommandContext* context = shortcuts->GetContext("captions");
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(zelcore::ToUTF8(context->GetDisplayName()), "Captions Panel");

    std::vector<std::pair<std::string, UIF::CommandID>> listed;
    for (const UIF::ShortcutEntry& entry : shortcuts->GetShortcutList()) {
        if (entry.contextName == "captions") {
            listed.emplace_back(entry.commandName, entry.commandID);
            EXPECT_TRUE(entry.boundKey.empty()) << entry.commandName << " has no default key";
        }
    }
    const std::vector<std::pair<std::string, UIF::CommandID>> expected = {
        {"cmd.captions.justify.left", 32000},
        {"cmd.captions.justify.center", 32001},
        {"cmd.captions.justify.right", 32002},
        {"cmd.captions.italicize", 32010},
        {"cmd.captions.underline", 32011},
        {"cmd.captions.musicnote", 32012},
        {"cmd.captions.background.color", 32013},
        {"cmd.captions.text.color", 32014},
        {"cmd.captions.bold", 32015},
        {"cmd.captions.edge.color", 32016}};
    EXPECT_EQ(listed, expected);
}

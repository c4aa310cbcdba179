#include "zelcore/Localization.h"

#include <gtest/gtest.h>

using zelcore::Localize;
using zelcore::UTF16String;

class Localization : public testing::Test {
protected:
    void TearDown() override { zelcore::InstallTranslationTable({}); }
};

TEST_F(Localization, KeyYieldsItsDefaultTextUntilATranslationIsInstalled) {
    constexpr const char* key = "$$$/Corvala/Handlers/Captions/CaptionsWindowTitle=Captions";
    EXPECT_EQ(Localize(key), UTF16String(u"Captions"));
    zelcore::InstallTranslationTable(
        {{"$$$/Corvala/Handlers/Captions/CaptionsWindowTitle", UTF16String(u"Untertitel")}});
    EXPECT_EQ(Localize(key), UTF16String(u"Untertitel"));
    EXPECT_EQ(Localize(u"$$$/Corvala/Handlers/Captions/CaptionsWindowTitle=Captions"),
              UTF16String(u"Untertitel"));
}

TEST_F(Localization, DefaultTextKeepsEveryCharacterAfterTheFirstEquals) {
    EXPECT_EQ(Localize("$$$/A/B=x = y"), UTF16String(u"x = y"));
    EXPECT_EQ(Localize("$$$/A/B="), UTF16String());
    EXPECT_EQ(Localize("$$$/A/NoDefault"), UTF16String());
    EXPECT_EQ(zelcore::LocalizationKeyPath("$$$/A/B=x"), "$$$/A/B");
}

TEST_F(Localization, PlainTextIsNotAKey) {
    EXPECT_EQ(Localize("Closed Captioning"), UTF16String(u"Closed Captioning"));
    EXPECT_EQ(Localize("$$/not=a key"), UTF16String(u"$$/not=a key"));
}

#include "Autosaver.h"
#include "BE/ProjectFile.h"
#include "HostTestSupport.h"
#include "PreferencesDialog.h"
#include "ProjectDocument.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QSpinBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

std::string ReadBytes(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

class AutosaveTest : public testing::Test {
protected:
    void SetUp() override {
        path_ = temp_.PathOf("project.json");
        ASSERT_TRUE(QFile::copy(QStringLiteral(CORVALA_EXAMPLES_DIR "/demo-project.json"),
                                QString::fromStdString(path_)));
        ASSERT_FALSE(document_.Open(path_));
    }

    host_test::TempFolder temp_;
    std::string path_;
    host::ProjectDocument document_;
    std::vector<std::string> problems_;
    host::Autosaver autosaver_{document_, [this](const std::string& problem) {
                                   problems_.push_back(problem);
                               }};
};

TEST_F(AutosaveTest, CopiesAreWrittenBesideTheFileAndTheNewestFiveKept) {
    EXPECT_FALSE(autosaver_.SaveCopy()) << "nothing changed since the project was opened";
    const std::string original = ReadBytes(path_);
    document_.GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    for (int n = 0; n < 7; ++n) {
        ASSERT_TRUE(autosaver_.SaveCopy());
    }
    const std::vector<std::string> copies = host::Autosaver::CopiesOf(path_);
    ASSERT_EQ(copies.size(), host::Autosaver::kKeptCopies);
    EXPECT_THAT(copies.front(), EndsWith("project.json.autosave-0003.json"));
    EXPECT_THAT(copies.back(), EndsWith("project.json.autosave-0007.json"));
    EXPECT_EQ(ReadBytes(copies.back()), BE::SerializeProject(document_.GetProject()).bytes);
    EXPECT_EQ(ReadBytes(path_), original);
    EXPECT_TRUE(document_.IsModified()) << "a copy is not a save";
    EXPECT_TRUE(problems_.empty());
}

TEST_F(AutosaveTest, AFailedCopyKeepsTheCopiesBeforeIt) {
    document_.GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    for (int n = 0; n < 5; ++n) {
        ASSERT_TRUE(autosaver_.SaveCopy());
    }
    const std::vector<std::string> before = host::Autosaver::CopiesOf(path_);
    std::vector<std::string> contents;
    for (const std::string& copy : before) {
        contents.push_back(ReadBytes(copy));
    }
    // The next copy's name is taken by a folder, so writing it fails.
    ASSERT_TRUE(
        QDir().mkdir(QString::fromStdString(temp_.PathOf("project.json.autosave-0006.json"))));
    document_.GetProject()->AddBin(u"More", BE::UndoMode::kAsUndoStep);
    EXPECT_FALSE(autosaver_.SaveCopy());
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr("project.json.autosave-0006.json could not be written"));
    ASSERT_EQ(host::Autosaver::CopiesOf(path_), before);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(ReadBytes(before[i]), contents[i]) << before[i];
    }
}

TEST_F(AutosaveTest, ANeverSavedProjectIsNotCopied) {
    document_.NewProject();
    document_.GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    EXPECT_FALSE(autosaver_.SaveCopy());
    EXPECT_TRUE(problems_.empty());
}

TEST(PreferencesDialogTest, TheAutosaveIntervalCanBeChangedOrTurnedOff) {
    host::PreferencesDialog on(10);
    EXPECT_TRUE(on.GetAutosaveField().isChecked());
    EXPECT_EQ(on.GetAutosaveMinutes(), 10);
    on.GetIntervalField().setValue(3);
    EXPECT_EQ(on.GetAutosaveMinutes(), 3);
    on.GetAutosaveField().click();
    EXPECT_FALSE(on.GetIntervalField().isEnabled());
    EXPECT_EQ(on.GetAutosaveMinutes(), 0);

    host::PreferencesDialog off(0);
    EXPECT_FALSE(off.GetAutosaveField().isChecked());
    EXPECT_FALSE(off.GetIntervalField().isEnabled());
    EXPECT_EQ(off.GetIntervalField().value(), host::Autosaver::kDefaultIntervalMinutes);
    off.GetAutosaveField().click();
    EXPECT_EQ(off.GetAutosaveMinutes(), host::Autosaver::kDefaultIntervalMinutes);
    EXPECT_FALSE(off.GetAutosaveField().accessibleName().isEmpty());
    EXPECT_FALSE(off.GetIntervalField().accessibleName().isEmpty());
}

} // namespace

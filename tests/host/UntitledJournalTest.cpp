// The journal of a project never saved, kept in the user's data folder, and
// what the person hears when a journal stops recording.
#include "BE/EditJournal.h"
#include "BE/ProjectFile.h"
#include "HostTestSupport.h"
#include "ProjectDocument.h"
#include "RecoveryPrompt.h"
#include "UIF/MessageBox.h"
#include "zelcore/UTF16String.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host::RecoveryRequest;
using testing::HasSubstr;

std::string Saved(const KSL::InterfaceRef<BE::IProject>& project) {
    return BE::SerializeProject(project).bytes;
}

std::size_t RecordsIn(const std::string& journalPath) {
    const BE::JournalReadResult read = BE::ReadJournalFile(journalPath);
    return read.journal ? read.journal->records.size() : 0;
}

class UntitledJournalTest : public testing::Test {
protected:
    std::unique_ptr<host::ProjectDocument> Document(RecoveryRequest request,
                                                    bool interactive = false) {
        auto document = std::make_unique<host::ProjectDocument>();
        host::JournalPolicy policy =
            host::MakeJournalPolicy(request, interactive, [this](const std::string& problem) {
                problems_.push_back(problem);
            });
        policy.untitledJournalPath = untitled_;
        document->SetJournalPolicy(std::move(policy));
        return document;
    }

    // A new project given three bins, the last one undone, left as a crash
    // would leave it; returns its content.
    std::string EditUntitledAndLeave() {
        auto document = Document(RecoveryRequest::kDiscard);
        document->NewProject();
        EXPECT_EQ(document->GetJournalPath(), untitled_);
        const KSL::InterfaceRef<BE::IProject>& project = document->GetProject();
        for (const char16_t* name : {u"Scenes", u"Clips", u"Spare"}) {
            project->AddBin(name, BE::UndoMode::kAsUndoStep);
        }
        project->GetUndoHistory().Undo();
        return Saved(project);
    }

    std::vector<std::string> SetAside() const {
        const QFileInfo file(QString::fromStdString(untitled_));
        std::vector<std::string> names;
        for (const QString& name :
             file.dir().entryList({file.fileName() + ".set-aside-*"}, QDir::Files)) {
            names.push_back(name.toStdString());
        }
        return names;
    }

    host_test::TempFolder temp_;
    // In a folder that does not exist yet, as on a first run.
    std::string untitled_ = temp_.PathOf("data/corvala/untitled.journal");
    std::vector<std::string> problems_;
};

TEST_F(UntitledJournalTest, RecoverBringsBackANeverSavedProjectAndSavingMovesItsJournal) {
    const std::string edited = EditUntitledAndLeave();
    ASSERT_EQ(RecordsIn(untitled_), 4u);
    auto document = Document(RecoveryRequest::kRecover);
    document->NewProject();
    EXPECT_EQ(Saved(document->GetProject()), edited);
    EXPECT_TRUE(document->IsModified());
    EXPECT_TRUE(document->GetProject()->GetUndoHistory().CanRedo());
    EXPECT_TRUE(problems_.empty());
    // The journal goes on recording, then saving moves it beside the file.
    document->GetProject()->AddBin(u"More", BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(RecordsIn(untitled_), 5u);
    const std::string file = temp_.PathOf("saved.json");
    ASSERT_FALSE(document->SaveAs(file));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(untitled_)));
    EXPECT_EQ(document->GetJournalPath(), BE::JournalPathFor(file));
}

TEST_F(UntitledJournalTest, ACopyOfAFileIsJournalledInTheDataFolderNeverBesideTheFile) {
    const std::string example = temp_.PathOf("example.json");
    ASSERT_TRUE(QFile::copy(QStringLiteral(CORVALA_EXAMPLES_DIR "/demo-project.json"),
                            QString::fromStdString(example)));
    const std::string copyJournal = temp_.PathOf("data/corvala/copy.journal");
    std::string edited;
    {
        auto document = Document(RecoveryRequest::kDiscard);
        ASSERT_FALSE(document->OpenCopy(example));
        EXPECT_TRUE(document->GetFilePath().empty());
        EXPECT_EQ(document->GetJournalPath(), copyJournal);
        document->GetProject()->AddBin(u"Mine", BE::UndoMode::kAsUndoStep);
        edited = Saved(document->GetProject());
    } // left with the change unsaved, as a crash leaves it
    EXPECT_FALSE(QFile::exists(QString::fromStdString(BE::JournalPathFor(example))));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(untitled_)));

    auto next = Document(RecoveryRequest::kRecover);
    ASSERT_FALSE(next->OpenCopy(example));
    EXPECT_EQ(Saved(next->GetProject()), edited);
    EXPECT_TRUE(next->IsModified());
    EXPECT_TRUE(problems_.empty());
}

TEST_F(UntitledJournalTest, AnInteractiveStartAsksOnceAndNoSetsTheChangesAside) {
    EditUntitledAndLeave();
    UIF::MessageBoxRecorder boxes;
    auto document = Document(RecoveryRequest::kAsk, true);
    document->NewProject();
    ASSERT_EQ(boxes.GetRecords().size(), 1u);
    EXPECT_THAT(zelcore::ToUTF8(boxes.GetRecords()[0].text),
                HasSubstr("The untitled project, never saved, has 4 changes"));
    // The recorder answers Yes, the default.
    EXPECT_EQ(document->GetProject()->GetBinCount(), 2u);
    document.reset();
    auto discarding = Document(RecoveryRequest::kDiscard);
    discarding->NewProject();
    EXPECT_EQ(discarding->GetProject()->GetBinCount(), 0u);
    EXPECT_EQ(SetAside().size(), 1u);
    EXPECT_EQ(RecordsIn(untitled_), 0u);
}

TEST_F(UntitledJournalTest, ATornUntitledJournalRecoversItsIntactRecords) {
    EditUntitledAndLeave();
    QFile journal(QString::fromStdString(untitled_));
    const QByteArray whole = [&journal] {
        journal.open(QIODevice::ReadOnly);
        return journal.readAll();
    }();
    journal.close();
    // Cut into the last record, the undo: the three bins stand.
    ASSERT_TRUE(journal.resize(whole.size() - 5));
    auto document = Document(RecoveryRequest::kRecover);
    document->NewProject();
    EXPECT_EQ(document->GetProject()->GetBinCount(), 3u);
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr("recovering the untitled project"));
    EXPECT_THAT(problems_[0], HasSubstr("torn"));
}

TEST_F(UntitledJournalTest, ARunWithoutAWindowAsksNothingAndLeavesTheJournal) {
    EditUntitledAndLeave();
    const QByteArray before = [this] {
        QFile file(QString::fromStdString(untitled_));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }();
    UIF::MessageBoxRecorder boxes;
    {
        auto document = Document(RecoveryRequest::kAsk, false);
        document->NewProject();
        EXPECT_TRUE(document->GetJournalPath().empty());
        document->GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    }
    EXPECT_TRUE(boxes.GetRecords().empty());
    QFile after(QString::fromStdString(untitled_));
    ASSERT_TRUE(after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), before);
}

TEST_F(UntitledJournalTest, AnUntitledJournalInUseIsLeftToTheRunUsingIt) {
    auto first = Document(RecoveryRequest::kDiscard);
    first->NewProject();
    first->GetProject()->AddBin(u"Mine", BE::UndoMode::kAsUndoStep);
    auto second = Document(RecoveryRequest::kRecover);
    second->NewProject();
    EXPECT_TRUE(second->GetJournalPath().empty());
    EXPECT_EQ(second->GetProject()->GetBinCount(), 0u);
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr("in use by another run"));
    first->GetProject()->AddBin(u"Also mine", BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(RecordsIn(untitled_), 2u);
    // Saved, the first lets it go, and the next new project takes it.
    ASSERT_FALSE(first->SaveAs(temp_.PathOf("first.json")));
    second->NewProject();
    EXPECT_EQ(second->GetJournalPath(), untitled_);
}

TEST_F(UntitledJournalTest, CorvalaKeepsItInItsDataFolderAndTheCommandLineDecides) {
    const QString dataHome = QString::fromStdString(temp_.PathOf("home-data"));
    const std::string journal = dataHome.toStdString() + "/corvala/untitled.journal";
    untitled_ = journal;
    EditUntitledAndLeave();
    const host_test::ProcessResult run = host_test::RunCorvala(
        {"--discard-recovery", "--screenshot", QString::fromStdString(temp_.PathOf("shot.png"))},
        {{"XDG_DATA_HOME", dataHome}});
    ASSERT_EQ(run.exitCode, 0) << run.standardError.toStdString();
    EXPECT_EQ(SetAside().size(), 1u);
    // The new project, unchanged, closed cleanly: its journal is gone.
    EXPECT_FALSE(QFile::exists(QString::fromStdString(journal)));
}

// A journal that stops recording is told once, in a message box naming the
// file and the reason; a save starts a journal again.
TEST_F(UntitledJournalTest, AStoppedJournalIsToldOnceAndASaveStartsItAgain) {
    UIF::MessageBoxRecorder boxes;
    auto document = Document(RecoveryRequest::kAsk, true);
    document->NewProject();
    const KSL::InterfaceRef<BE::IProject>& project = document->GetProject();
    project->AddBin(u"Scenes", BE::UndoMode::kAsUndoStep);
    ASSERT_TRUE(QDir(QString::fromStdString(temp_.PathOf("data"))).removeRecursively());
    project->AddBin(u"Lost", BE::UndoMode::kAsUndoStep);
    ASSERT_TRUE(host_test::WaitUntil([&boxes] { return !boxes.GetRecords().empty(); }));
    project->AddBin(u"Also lost", BE::UndoMode::kAsUndoStep);
    // Past the flush delay: nothing more comes.
    const QDeadlineTimer later(3 * BE::EditJournal::kFlushDelayMs);
    host_test::WaitUntil([&later] { return later.hasExpired(); });
    ASSERT_EQ(boxes.GetRecords().size(), 1u);
    const std::string text = zelcore::ToUTF8(boxes.GetRecords()[0].text);
    EXPECT_THAT(text, HasSubstr(untitled_ + ": the file or its folder was deleted"));
    EXPECT_THAT(text, HasSubstr("not protected against a crash until you save"));
    EXPECT_EQ(boxes.GetRecords()[0].icon, UIF::MBIcon::kWarning);

    const std::string file = temp_.PathOf("saved.json");
    ASSERT_FALSE(document->SaveAs(file));
    project->AddBin(u"Kept", BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(RecordsIn(BE::JournalPathFor(file)), 1u);
    // Its journal's place taken by a folder: the file's journal stops, and the
    // next save cannot start one there and says so.
    ASSERT_TRUE(QFile::remove(QString::fromStdString(BE::JournalPathFor(file))));
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(BE::JournalPathFor(file))));
    project->AddBin(u"Lost again", BE::UndoMode::kAsUndoStep);
    ASSERT_TRUE(host_test::WaitUntil([&boxes] { return boxes.GetRecords().size() == 2; }));
    ASSERT_FALSE(document->Save());
    EXPECT_TRUE(document->GetJournalPath().empty());
    ASSERT_FALSE(problems_.empty());
    EXPECT_THAT(problems_.back(), HasSubstr("not journalled"));
    EXPECT_THAT(problems_.back(), HasSubstr("Is a directory"));
}

} // namespace

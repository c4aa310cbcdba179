#include "BE/EditJournal.h"
#include "BE/ProjectFile.h"
#include "HostTestSupport.h"
#include "MZ/Captioning.h"
#include "ProjectDocument.h"
#include "RecoveryPrompt.h"
#include "zelcore/UTF16String.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host::RecoveryRequest;
using testing::HasSubstr;

std::string ReadBytes(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

std::string Saved(const KSL::InterfaceRef<BE::IProject>& project) {
    return BE::SerializeProject(project).bytes;
}

class ProjectJournalTest : public testing::Test {
protected:
    void SetUp() override {
        path_ = temp_.PathOf("project.json");
        ASSERT_TRUE(QFile::copy(QStringLiteral(CORVALA_EXAMPLES_DIR "/demo-project.json"),
                                QString::fromStdString(path_)));
    }

    std::unique_ptr<host::ProjectDocument> Document(RecoveryRequest request,
                                                    bool interactive = false) {
        auto document = std::make_unique<host::ProjectDocument>();
        document->SetJournalPolicy(
            host::MakeJournalPolicy(request, interactive, [this](const std::string& problem) {
                problems_.push_back(problem);
            }));
        return document;
    }

    // Opens the project, makes two changes (one an undo step, one a live
    // update) and closes it without saving, as a crash would leave it.
    std::string EditAndLeave(const std::string& path) {
        auto document = Document(RecoveryRequest::kDiscard);
        EXPECT_FALSE(document->Open(path));
        const auto stream =
            document->GetProject()->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(0);
        MZ::Captioning captioning(stream);
        captioning.RemoveCaption(stream->GetCaption(0), false);
        zelcaptioning::CaptionPtr changed(new zelcaptioning::Caption(*stream->GetCaption(0)));
        changed->SetEndTime(changed->GetEndTime() + zelmediatypes::TickTime(8467200));
        captioning.ReplaceCaption(stream->GetCaption(0), changed, false, u"");
        return Saved(document->GetProject());
    }

    std::vector<std::string> SetAsideJournals() const {
        const QFileInfo file(QString::fromStdString(path_));
        std::vector<std::string> names;
        for (const QString& name :
             file.dir().entryList({file.fileName() + ".journal.set-aside-*"}, QDir::Files)) {
            names.push_back(name.toStdString());
        }
        return names;
    }

    host_test::TempFolder temp_;
    std::string path_;
    std::vector<std::string> problems_;
};

TEST_F(ProjectJournalTest, RecoverBringsBackTheUnsavedChangesAndTheirHistory) {
    const std::string edited = EditAndLeave(path_);
    auto document = Document(RecoveryRequest::kRecover);
    ASSERT_FALSE(document->Open(path_));
    EXPECT_EQ(Saved(document->GetProject()), edited);
    EXPECT_TRUE(document->IsModified());
    BE::IUndoHistory& history = document->GetProject()->GetUndoHistory();
    EXPECT_EQ(history.GetStepCount(), 1u);
    EXPECT_TRUE(problems_.empty());
    // The journal goes on: a second crash keeps the first changes and the new one.
    history.Undo();
    const std::string undone = Saved(document->GetProject());
    document.reset();
    auto again = Document(RecoveryRequest::kRecover);
    ASSERT_FALSE(again->Open(path_));
    EXPECT_EQ(Saved(again->GetProject()), undone);
    EXPECT_TRUE(again->GetProject()->GetUndoHistory().CanRedo());
}

TEST_F(ProjectJournalTest, DiscardSetsTheJournalAsideUnderADatedName) {
    EditAndLeave(path_);
    const std::string journal = ReadBytes(BE::JournalPathFor(path_));
    auto document = Document(RecoveryRequest::kDiscard);
    ASSERT_FALSE(document->Open(path_));
    EXPECT_EQ(Saved(document->GetProject()), ReadBytes(path_));
    const std::vector<std::string> aside = SetAsideJournals();
    ASSERT_EQ(aside.size(), 1u);
    EXPECT_EQ(ReadBytes(temp_.PathOf(aside[0])), journal);
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr(aside[0]));
    EXPECT_TRUE(BE::ReadJournalFile(BE::JournalPathFor(path_)).journal->records.empty());
}

TEST_F(ProjectJournalTest, AJournalOfAnotherFileIsNeverApplied) {
    const std::string other = temp_.PathOf("other.json");
    ASSERT_TRUE(QFile::copy(QString::fromStdString(path_), QString::fromStdString(other)));
    EditAndLeave(other);
    // The same project saved with a change is another content of the file.
    {
        auto document = Document(RecoveryRequest::kDiscard);
        ASSERT_FALSE(document->Open(path_));
        document->GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
        ASSERT_FALSE(document->Save());
    }
    ASSERT_TRUE(QFile::copy(QString::fromStdString(BE::JournalPathFor(other)),
                            QString::fromStdString(BE::JournalPathFor(path_))));
    auto document = Document(RecoveryRequest::kRecover);
    ASSERT_FALSE(document->Open(path_));
    EXPECT_EQ(Saved(document->GetProject()), ReadBytes(path_));
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr("belongs to another content of the project file"));
    EXPECT_EQ(SetAsideJournals().size(), 1u);
}

TEST_F(ProjectJournalTest, SavingEmptiesTheJournalAndACleanCloseRemovesIt) {
    auto document = Document(RecoveryRequest::kDiscard);
    ASSERT_FALSE(document->Open(path_));
    const std::string journal = document->GetJournalPath();
    EXPECT_EQ(journal, BE::JournalPathFor(path_));
    document->GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(BE::ReadJournalFile(journal).journal->records.size(), 1u);
    ASSERT_FALSE(document->Save());
    const BE::JournalReadResult emptied = BE::ReadJournalFile(journal);
    ASSERT_TRUE(emptied.journal);
    EXPECT_TRUE(emptied.journal->records.empty());
    EXPECT_EQ(emptied.journal->projectDigest, BE::ProjectFileDigest(ReadBytes(path_)));
    document.reset();
    EXPECT_FALSE(QFile::exists(QString::fromStdString(journal)));
}

TEST_F(ProjectJournalTest, AnInteractiveOpenAsksOnceAndYesRecovers) {
    const std::string edited = EditAndLeave(path_);
    UIF::MessageBoxRecorder boxes;
    auto document = Document(RecoveryRequest::kAsk, true);
    ASSERT_FALSE(document->Open(path_));
    ASSERT_EQ(boxes.GetRecords().size(), 1u);
    EXPECT_THAT(zelcore::ToUTF8(boxes.GetRecords()[0].text),
                HasSubstr("\"project.json\" has 2 changes that were not saved"));
    EXPECT_EQ(boxes.GetRecords()[0].defaultResult, UIF::MBResult::kYes);
    EXPECT_EQ(Saved(document->GetProject()), edited);
}

TEST_F(ProjectJournalTest, ARunWithoutAWindowLeavesAJournalAsItIs) {
    EditAndLeave(path_);
    const std::string journal = ReadBytes(BE::JournalPathFor(path_));
    UIF::MessageBoxRecorder boxes;
    {
        auto document = Document(RecoveryRequest::kAsk, false);
        ASSERT_FALSE(document->Open(path_));
        EXPECT_EQ(Saved(document->GetProject()), ReadBytes(path_));
        EXPECT_TRUE(document->GetJournalPath().empty());
        document->GetProject()->AddBin(u"Extra", BE::UndoMode::kAsUndoStep);
    }
    EXPECT_TRUE(boxes.GetRecords().empty());
    EXPECT_EQ(ReadBytes(BE::JournalPathFor(path_)), journal);
}

TEST_F(ProjectJournalTest, ATornJournalRecoversItsIntactRecordsAndSaysWhatWasDropped) {
    const std::string edited = EditAndLeave(path_);
    QFile journal(QString::fromStdString(BE::JournalPathFor(path_)));
    ASSERT_TRUE(journal.open(QIODevice::Append));
    journal.write("1234abcd {\"op\":\"ed");
    journal.close();
    auto document = Document(RecoveryRequest::kRecover);
    ASSERT_FALSE(document->Open(path_));
    EXPECT_EQ(Saved(document->GetProject()), edited);
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_THAT(problems_[0], HasSubstr("record 3 at byte"));
    EXPECT_THAT(problems_[0], HasSubstr("torn"));
}

} // namespace

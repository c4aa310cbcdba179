// File > Import Captions and Export Captions, and a caption file dropped on a
// clip: formats found from content, the stream each format becomes, one undo
// step, the question before a replacement, and what a bad file reports.
#include "HostTestSupport.h"

#include "BE/IProject.h"
#include "HostCommands.h"
#include "MZ/Captioning.h"
#include "ProjectPanel.h"
#include "captionformats/CaptionFileFormat.h"
#include "zelcore/UTF16String.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTreeView>
#include <QUrl>

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace {

using captionformats::CaptionFileFormat;
using testing::HasSubstr;

constexpr const char* kTwoCues = "1\r\n00:00:01,000 --> 00:00:02,500\r\nFirst <i>line</i>\r\n\r\n"
                                 "2\r\n00:00:03,000 --> 00:00:04,000\r\nSecond\r\n";

class CaptionFilesTest : public host_test::HostWindowTest {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        const std::string path = temp.PathOf(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::string Read(const std::string& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }
    bool Import(const std::string& path) {
        chooser.answers.push_back(path);
        return ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_ImportCaptions);
    }
    static std::vector<std::string> Texts(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; stream && i < stream->GetCaptionCount(); ++i) {
            texts.push_back(
                zelcore::ToUTF8(MZ::Captioning::ConvertCaptionBlockToText(stream->GetCaption(i))));
        }
        return texts;
    }
    // The text with the spaces at the start of each line taken out.
    static std::string WithoutLeadingSpaces(const std::string& text) {
        std::string result;
        bool lineStart = true;
        for (const char c : text) {
            if (lineStart && c == ' ') {
                continue;
            }
            result += c;
            lineStart = c == '\n';
        }
        return result;
    }
    BE::IUndoHistory& History() { return Window().GetDocument().GetProject()->GetUndoHistory(); }
};

TEST_F(CaptionFilesTest, TheContentDecidesTheFormatAndTheImportIsOneUndoStep) {
    OpenDemo();
    const auto clip = Clip(host_test::kPlainClip);
    ClickItem(clip.Get());
    ASSERT_TRUE(Import(Write("notes.txt", kTwoCues)));
    const auto open = clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions);
    ASSERT_TRUE(open) << "SubRip content becomes open captions, whatever the extension";
    EXPECT_EQ(Texts(open), (std::vector<std::string>{"First line", "Second"}));
    EXPECT_EQ(zelcore::ToUTF8(History().GetUndoStepName()), "Import Captions");
    EXPECT_EQ(Window().GetProjectPanel().GetSelectedItem().Get(), open.Get());

    Window().GetDocument().Undo();
    EXPECT_FALSE(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions));
    Window().GetDocument().Redo();
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)),
              (std::vector<std::string>{"First line", "Second"}));

    // EBU STL bytes under a misleading name become the teletext stream.
    const captionformats::ReadResult cues =
        captionformats::MakeReader(CaptionFileFormat::kSrt)->Read(kTwoCues, {"cues.srt"});
    const captionformats::WriteResult stl =
        captionformats::MakeWriter(CaptionFileFormat::kEbuStl)->Write(cues.captions, {});
    ASSERT_TRUE(stl.Succeeded());
    ClickItem(clip.Get());
    ASSERT_TRUE(Import(Write("subtitles.dat", stl.bytes)));
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_Teletext)),
              (std::vector<std::string>{"First line", "Second"}));
    EXPECT_TRUE(messageBoxes->GetRecords().empty()) << "nothing was left out";
}

TEST_F(CaptionFilesTest, AnExportedStreamImportsBackWithEveryCaption) {
    OpenDemo();
    const auto captioned = Clip(host_test::kCaptionedClip);
    const auto cea608 = captioned->FindCaptioningStream(zelcaptioning::kStreamFormat_CEA608);
    ClickItem(captioned.Get());
    const std::string scc = temp.PathOf("interview.scc");
    chooser.answers.push_back(scc);
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_ExportCaptions));
    EXPECT_EQ(chooser.offeredFormats, (std::vector<CaptionFileFormat>{
                                          CaptionFileFormat::kScc, CaptionFileFormat::kTtml,
                                          CaptionFileFormat::kWebVtt, CaptionFileFormat::kSrt}));
    EXPECT_THAT(Read(scc), testing::StartsWith("Scenarist_SCC V1.0"));
    // The writer lists what SCC cannot carry: the demo has lines longer than
    // 32 columns and a roll-up caption whose earlier lines were never shown.
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    EXPECT_THAT(zelcore::ToUTF8(messageBoxes->GetRecords()[0].text),
                HasSubstr("lines past column 32 in 3 captions"));

    const auto plain = Clip(host_test::kPlainClip);
    ClickItem(plain.Get());
    const std::size_t steps = History().GetStepCount();
    ASSERT_TRUE(Import(scc));
    EXPECT_EQ(History().GetStepCount(), steps + 1);
    const auto imported = plain->FindCaptioningStream(zelcaptioning::kStreamFormat_CEA608);
    // A mid-row style code takes a cell, which reads back as a space before
    // the line; the roll-up caption keeps only its last line.
    std::vector<std::string> expected = Texts(cea608);
    std::vector<std::string> got = Texts(imported);
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i + 1 < expected.size(); ++i) {
        EXPECT_EQ(WithoutLeadingSpaces(got[i]), expected[i]) << "caption " << i + 1;
    }
}

TEST_F(CaptionFilesTest, ReplacingAStreamWithCaptionsAsksFirst) {
    OpenDemo();
    const auto clip = Clip(host_test::kCaptionedClip);
    const auto before = clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions);
    const std::vector<std::string> oldTexts = Texts(before);
    ASSERT_FALSE(oldTexts.empty());
    ClickItem(clip.Get());
    const std::string path = Write("new.srt", kTwoCues);
    const std::size_t steps = History().GetStepCount();

    // The recorded box answers its default, No: nothing changes.
    Import(path);
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    EXPECT_THAT(zelcore::ToUTF8(messageBoxes->GetRecords()[0].text),
                HasSubstr("Replace them with the 2 captions of new.srt?"));
    EXPECT_EQ(History().GetStepCount(), steps);
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)),
              oldTexts);

    // A person answers Yes in the real box.
    messageBoxes.reset();
    host_test::WhenModalLoopRuns([] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->button(QMessageBox::Yes)->click();
    });
    ASSERT_TRUE(Import(path));
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)),
              (std::vector<std::string>{"First line", "Second"}));
    Window().GetDocument().Undo();
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)),
              oldTexts);
}

TEST_F(CaptionFilesTest, BadFilesAreReportedByNameAndPlaceAndChangeNothing) {
    OpenDemo();
    const auto clip = Clip(host_test::kPlainClip);
    ClickItem(clip.Get());
    const std::size_t steps = History().GetStepCount();

    Import(Write("noise.bin", std::string("\x01\x02 not captions \xff", 17)));
    Import(Write("broken.ttml", "<tt xmlns=\"http://www.w3.org/ns/ttml\">\n<body><div>\n</tt>\n"));
    Import(temp.PathOf("missing.vtt"));
    ASSERT_EQ(reportedProblems.size(), 3u);
    EXPECT_THAT(reportedProblems[0], HasSubstr("none of SubRip, WebVTT, SCC, TTML or EBU STL"));
    EXPECT_THAT(reportedProblems[1], HasSubstr("broken.ttml:3"));
    EXPECT_THAT(reportedProblems[2], HasSubstr("missing.vtt"));
    EXPECT_EQ(History().GetStepCount(), steps);
    EXPECT_EQ(clip->GetCaptioningStreamCount(), 0u);

    // What a reader leaves out is listed in one box after the import.
    ASSERT_TRUE(Import(Write("tags.srt", "1\n00:00:01,000 --> 00:00:02,000\n<blink>Hi</blink>\n\n"
                                         "2\n00:00:03,000 --> 00:00:04,000\n<font face=\"x\">"
                                         "Yo</font>\n")));
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    const std::string listed = zelcore::ToUTF8(messageBoxes->GetRecords()[0].text);
    EXPECT_THAT(listed, HasSubstr("tags.srt:3:"));
    EXPECT_THAT(listed, HasSubstr("tags.srt:7:"));
}

TEST_F(CaptionFilesTest, AFileDroppedOnAClipRowIsImportedIntoThatClip) {
    OpenDemo();
    const auto clip = Clip(host_test::kPlainClip);
    QTreeView& tree = Window().GetProjectPanel().GetTreeView();
    const QRect row = tree.visualRect(Window().GetProjectPanel().GetModel().IndexOf(clip.Get()));
    ASSERT_TRUE(row.isValid());
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(Write("dropped.srt", kTwoCues)))});
    QDragEnterEvent enter(row.center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(row.center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(Texts(clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)),
              (std::vector<std::string>{"First line", "Second"}));

    QDropEvent nowhere(QPoint(5, tree.viewport()->height() - 2), Qt::CopyAction, &data,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &nowhere);
    EXPECT_FALSE(nowhere.isAccepted()) << "below the rows there is no clip";
}

} // namespace

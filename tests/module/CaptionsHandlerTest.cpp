#include "CaptionsHandler.h"
#include "CaptionsView.h"

#include "BE/CaptionMessages.h"
#include "BE/IUndoHistory.h"
#include "BE/StreamMessages.h"
#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "KSL/Exception.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/Stations.h"
#include "UIF/WindowClasses.h"
#include "UIF/Workspace.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>

#include <gtest/gtest.h>

#include <memory>
#include <set>

using HandlerCaptions::CaptionsHandler;

namespace {

class CaptionsHandlerTest : public testing::Test {
protected:
    CaptionsHandlerTest()
        : project(BE::CreateProject())
        , handler(new CaptionsHandler(HSL::kCaptionsHandlerID, project)) {
        bin = project->AddBin(u"Footage", BE::UndoMode::kWithoutUndoStep);
    }

    KSL::InterfaceRef<BE::IMasterClip> AddClip(const char16_t* name) {
        BE::MasterClipSettings settings;
        settings.name = name;
        settings.frameRect = {0, 0, 1920, 1080};
        return project->AddMasterClip(bin, settings, BE::UndoMode::kWithoutUndoStep);
    }

    static void Broadcast(const KSL::StationID& station, const KSL::Message& message) {
        KSL::StationUtils::BroadcastMessage(station, message);
    }

    KSL::InterfaceRef<BE::IProject> project;
    KSL::InterfaceRef<BE::IBin> bin;
    std::unique_ptr<CaptionsHandler> handler;
};

zelcaptioning::CaptionPtr OneLineCaption(std::int64_t second) {
    zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
    caption->SetBeginTime(zelmediatypes::TickTime::FromSeconds(second));
    caption->SetEndTime(zelmediatypes::TickTime::FromSeconds(second + 1));
    zelcaptioning::CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
    paragraph->AppendCaptionTextSpan(new zelcaptioning::CaptionTextSpan(u"Hello there", {}));
    caption->AppendCaptionTextParagraph(paragraph);
    return caption;
}

// The captions announced as changed on a station while it lives.
class ChangeLog : public KSL::Listener {
public:
    explicit ChangeLog(const KSL::StationID& station) {
        KSL::StationUtils::AddListener(station, this);
    }
    std::set<const zelcaptioning::Caption*> changed;

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (const auto* captions = message.As<BE::CaptionsChangedMessage>()) {
            for (const auto& [stream, change] : captions->GetChanges()) {
                changed.insert(change.caption.get());
            }
        }
        return false;
    }
};

bool IsMeasured(const zelcaptioning::CaptionPtr& caption) {
    return caption->GetCaptionTextParagraph(0)->HasMeasuredLineSize();
}

} // namespace

TEST_F(CaptionsHandlerTest, RegistersTheWindowAndListensUntilDestroyed) {
    const auto windows = UIF::GetWindowList();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(zelcore::ToUTF8(windows[0].title), "Captions");
    EXPECT_EQ(windows[0].handlerID, HSL::kCaptionsHandlerID);
    EXPECT_TRUE(
        KSL::StationUtils::HasListener(MZ::kStation_ClosedCaptionsActivation, handler.get()));
    EXPECT_TRUE(KSL::StationUtils::HasListener(MZ::kStation_MasterClipActivation, handler.get()));

    const auto clip = AddClip(u"A");
    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(clip));
    const KSL::StationID clipStation = KSL::StationOf(clip);
    const std::size_t listenersOnClip = KSL::StationUtils::CountListeners(clipStation);

    handler.reset();
    EXPECT_TRUE(UIF::GetWindowList().empty());
    EXPECT_EQ(KSL::StationUtils::CountListeners(MZ::kStation_ClosedCaptionsActivation), 0u);
    EXPECT_EQ(KSL::StationUtils::CountListeners(clipStation), listenersOnClip - 1);
}

TEST_F(CaptionsHandlerTest, FollowsTheSelectedClipsStation) {
    const auto a = AddClip(u"A");
    const auto b = AddClip(u"B");
    const KSL::StationID stationA = KSL::StationOf(a);
    const KSL::StationID stationB = KSL::StationOf(b);

    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(a));
    EXPECT_EQ(handler->GetRememberedClip(), a);
    EXPECT_TRUE(KSL::StationUtils::HasListener(stationA, handler.get()));
    KSL::StationUtils::RemoveListener(stationA, handler.get());
    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(a));
    EXPECT_FALSE(KSL::StationUtils::HasListener(stationA, handler.get()))
        << "the same clip again changes nothing and does not subscribe again";

    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(b));
    EXPECT_TRUE(KSL::StationUtils::HasListener(stationB, handler.get()));
    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage({}));
    EXPECT_FALSE(KSL::StationUtils::HasListener(stationB, handler.get()));
    EXPECT_FALSE(handler->GetRememberedClip());
}

TEST_F(CaptionsHandlerTest, FormatChangeToOpenCaptionsRemeasuresEveryCaption) {
    const auto clip = AddClip(u"A");
    const auto stream = project->AddCaptioningStream(clip, zelcaptioning::kStreamFormat_CEA608,
                                                     BE::UndoMode::kWithoutUndoStep);
    MZ::Captioning captioning(stream);
    const auto first = OneLineCaption(1);
    const auto second = OneLineCaption(3);
    captioning.AddCaption(first);
    captioning.AddCaption(second);
    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(clip));

    Broadcast(KSL::StationOf(clip), BE::CaptioningStreamFormatModifiedMessage(
                                        clip, stream, zelcaptioning::kStreamFormat_CEA708));
    EXPECT_FALSE(IsMeasured(first)) << "a closed-caption stream is not measured";

    // The new measures are announced as caption changes, so views of the
    // stream follow, but make no undo step of their own.
    ChangeLog changes(KSL::StationOf(stream));
    const std::size_t undoSteps = project->GetUndoHistory().GetStepCount();
    project->ChangeCaptioningStreamFormat(stream, zelcaptioning::kStreamFormat_OpenCaptions,
                                          BE::UndoMode::kWithoutUndoStep);
    EXPECT_EQ(changes.changed,
              (std::set<const zelcaptioning::Caption*>{first.get(), second.get()}));
    EXPECT_EQ(project->GetUndoHistory().GetStepCount(), undoSteps);
    for (const auto& caption : {first, second}) {
        ASSERT_TRUE(IsMeasured(caption));
        EXPECT_GT(caption->GetCaptionTextParagraph(0)->GetParagraphLineWidth(), 60u);
        zelcore::geom::RectT<int> used;
        caption->GetCaptionTextParagraph(0)->GetUsedRect(1536, 864, used);
        EXPECT_EQ(used.bottom, 864) << "laid out at the bottom of 0.8 of the frame";
    }
}

TEST_F(CaptionsHandlerTest, FormatMessagesOfOtherClipsAreIgnoredAndOnesWithoutAStreamRefused) {
    const auto a = AddClip(u"A");
    const auto b = AddClip(u"B");
    const auto stream = project->AddCaptioningStream(b, zelcaptioning::kStreamFormat_OpenCaptions,
                                                     BE::UndoMode::kWithoutUndoStep);
    const auto caption = OneLineCaption(1);
    MZ::Captioning(stream).AddCaption(caption);
    Broadcast(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage(a));
    Broadcast(KSL::StationOf(a), BE::CaptioningStreamFormatModifiedMessage(
                                     b, stream, zelcaptioning::kStreamFormat_CEA608));
    EXPECT_FALSE(IsMeasured(caption));
    EXPECT_THROW(Broadcast(KSL::StationOf(a), BE::CaptioningStreamFormatModifiedMessage(
                                                  a, {}, zelcaptioning::kStreamFormat_CEA608)),
                 KSL::Exception);
}

TEST_F(CaptionsHandlerTest, OpeningCaptionsCreatesShowsAndFrontsThePanel) {
    ASSERT_NE(UIF::Workspace::Instance(), nullptr);
    EXPECT_EQ(handler->GetView(), nullptr);
    const auto clip = AddClip(u"A");
    Broadcast(MZ::kStation_ClosedCaptionsActivation, MZ::ClosedCaptionsOpenedMessage(clip, {}));
    HandlerCaptions::CaptionsView* view = handler->GetView();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->IsCreated());
    EXPECT_TRUE(view->IsVisible());
    EXPECT_TRUE(view->IsFrontMost());

    view->Hide();
    MZ::CaptioningTrackItem item{clip, {}, {}};
    Broadcast(MZ::kStation_ClosedCaptionsActivation, MZ::CaptioningTrackItemOpenedMessage(item));
    EXPECT_EQ(handler->GetView(), view) << "the open view is reused";
    EXPECT_TRUE(view->IsVisible());
    EXPECT_EQ(view->GetShownTrackItem().masterClip, clip);
}

TEST_F(CaptionsHandlerTest, OpeningCaptionsAgainLeavesAFrontMostPanelWhereItIs) {
    // Bringing a panel to the front raises its window, which sends the window
    // a z-order change: counted here to see whether the panel was fronted.
    struct RaiseCounter : QObject {
        int raises = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            raises += event->type() == QEvent::ZOrderChange;
            return false;
        }
    } counter;
    const auto clip = AddClip(u"A");
    Broadcast(MZ::kStation_ClosedCaptionsActivation, MZ::ClosedCaptionsOpenedMessage(clip, {}));
    HandlerCaptions::CaptionsView* view = handler->GetView();
    ASSERT_NE(view, nullptr);
    ASSERT_TRUE(view->IsFrontMost());
    QMainWindow* window = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        window = window ? window : qobject_cast<QMainWindow*>(widget);
    }
    ASSERT_NE(window, nullptr);
    window->installEventFilter(&counter);

    Broadcast(MZ::kStation_ClosedCaptionsActivation, MZ::ClosedCaptionsOpenedMessage(clip, {}));
    EXPECT_EQ(counter.raises, 0);
    view->BringToFront(true, false);
    EXPECT_EQ(counter.raises, 1) << "the counter sees a panel brought to the front";
    window->removeEventFilter(&counter);
}

TEST_F(CaptionsHandlerTest, FindFallsThroughWhenTheFindBoxDeclines) {
    struct WithFindBox : CaptionsHandler {
        using CaptionsHandler::CaptionsHandler;
        bool OnSelectFindBox() override { return true; }
    };
    EXPECT_FALSE(handler->ObeyCommand(UIF::Command(UIF::kCommand_Find)));
    EXPECT_FALSE(handler->ObeyCommand(UIF::Command(HSL::kCommand_SelectNextPanel)))
        << "no other panel to go to";
    EXPECT_FALSE(handler->ObeyCommand(UIF::Command(32015)));
    handler.reset();
    WithFindBox finder(HSL::kCaptionsHandlerID, project);
    EXPECT_TRUE(finder.ObeyCommand(UIF::Command(UIF::kCommand_Find)));
    EXPECT_STREQ(finder.GetCommandContextName(), "captions");
}

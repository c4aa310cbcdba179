// Work that arrives while the pane's own commit runs waits for the 250 ms
// timer: it is carried out then, never dropped.
#include "PanelTestSupport.h"

#include "BE/CaptionMessages.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace {

using panel_test::PanelTest;

// Runs an action the first time the stream announces a change.
class DuringCommit : public KSL::Listener {
public:
    DuringCommit(const KSL::StationID& station, std::function<void()> action)
        : action_(std::move(action)) {
        KSL::StationUtils::AddListener(station, this);
    }

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (message.As<BE::CaptionsChangedMessage>() && action_) {
            std::function<void()> action = std::move(action_);
            action_ = nullptr;
            action();
        }
        return false;
    }

private:
    std::function<void()> action_;
};

TEST_F(PanelTest, ASelectionWhileACommitRunsIsCarriedOutByTheTimer) {
    OpenDemoWithPanel();
    const auto plainClip = Clip(host_test::kPlainClip);
    DuringCommit reaction(KSL::StationOf(ClosedCaptions()), [&] {
        KSL::StationUtils::BroadcastMessage(MZ::kStation_MasterClipActivation,
                                            MZ::MasterClipSelectedMessage(plainClip));
        KSL::StationUtils::BroadcastMessage(MZ::kStation_BinActivation, MZ::BinSelectedMessage({}));
    });
    ClickText(1);
    QTest::keyClicks(QApplication::focusWidget(), "x");
    EXPECT_TRUE(Pane().IsDeferralActive());
    EXPECT_EQ(Pane().GetCurrentClip(), Clip(host_test::kCaptionedClip))
        << "the clip selected during the commit is ignored, the bin selection waits";
    EXPECT_EQ(Rows().GetCount(), 30);
    Wait(400);
    EXPECT_FALSE(Pane().IsDeferralActive());
    EXPECT_FALSE(Pane().GetCurrentClip()) << "the bin selection cleared the panel";
    EXPECT_EQ(Rows().GetCount(), 0);
}

} // namespace

#include "TimeDisplayMenu.h"

#include "KSL/StationUtils.h"
#include "QtText.h"
#include "TimeDisplayNames.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/TimeDisplayChoice.h"

#include <QActionGroup>

namespace host {

// Hears one target's station: the same message classes travel on both.
class TimeDisplayMenu::StationFollower : public KSL::Listener {
public:
    StationFollower(TimeDisplayMenu& menu, Target target, const char* station)
        : menu_(menu)
        , target_(target) {
        KSL::StationUtils::AddListener(station, this);
    }

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (const auto* video = message.As<UIF::HotTimecodeVideoTimeDisplayChangedMessage>()) {
            menu_.Follow(target_, video->GetTimeDisplay());
        } else if (const auto* audio =
                       message.As<UIF::HotTimecodeAudioTimeDisplayChangedMessage>()) {
            menu_.Follow(target_, audio->GetTimeDisplay());
        } else {
            return false;
        }
        return true;
    }

private:
    TimeDisplayMenu& menu_;
    Target target_;
};

TimeDisplayMenu::TimeDisplayMenu(QWidget* parent)
    : QMenu(Localized("$$$/Corvala/Host/Menu/TimeDisplay=Time Display"), parent) {
    setObjectName(QStringLiteral("timeDisplayMenu"));
    sourceMenu_ =
        AddTargetMenu(Target::kSource, Localized("$$$/Corvala/Host/Menu/SourceTime=Source"));
    sequenceMenu_ =
        AddTargetMenu(Target::kSequence, Localized("$$$/Corvala/Host/Menu/SequenceTime=Sequence"));
    sourceFollower_ = std::make_unique<StationFollower>(*this, Target::kSource,
                                                        UIF::kStation_SourceTimeDisplayChanged);
    sequenceFollower_ = std::make_unique<StationFollower>(*this, Target::kSequence,
                                                          UIF::kStation_SequenceTimeDisplayChanged);
}

TimeDisplayMenu::~TimeDisplayMenu() = default;

zelmediatypes::TimeDisplay TimeDisplayMenu::GetVideoTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.video : sequence_.video;
}

zelmediatypes::TimeDisplay TimeDisplayMenu::GetAudioTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.audio : sequence_.audio;
}

QMenu* TimeDisplayMenu::AddTargetMenu(Target target, const QString& title) {
    QMenu* menu = addMenu(title);
    // Each group under its heading, one item checked in each.
    auto addGroup = [&](const QString& heading,
                        std::span<const zelmediatypes::TimeDisplay> displays,
                        zelmediatypes::TimeDisplay chosen) {
        menu->addSection(heading);
        auto* group = new QActionGroup(menu);
        for (const zelmediatypes::TimeDisplay display : displays) {
            QAction* action = menu->addAction(TimeDisplayName(display));
            action->setCheckable(true);
            action->setChecked(display == chosen);
            action->setData(static_cast<int>(display));
            group->addAction(action);
            connect(action, &QAction::triggered, this,
                    [this, target, display] { Choose(target, display); });
        }
    };
    const Choice& choice = target == Target::kSource ? source_ : sequence_;
    addGroup(Localized("$$$/Corvala/Host/Menu/VideoTimes=Video"), VideoTimeDisplays(),
             choice.video);
    addGroup(Localized("$$$/Corvala/Host/Menu/AudioTimes=Audio"), AudioTimeDisplays(),
             choice.audio);
    return menu;
}

void TimeDisplayMenu::Choose(Target target, zelmediatypes::TimeDisplay display) {
    const char* station = target == Target::kSource ? UIF::kStation_SourceTimeDisplayChanged
                                                    : UIF::kStation_SequenceTimeDisplayChanged;
    // The announcement comes back to Follow, which records it.
    UIF::AnnounceTimeDisplayChoice(KSL::StationID(station), display);
}

void TimeDisplayMenu::Follow(Target target, zelmediatypes::TimeDisplay display) {
    Choice& choice = target == Target::kSource ? source_ : sequence_;
    if (zelmediatypes::IsAudioTimeDisplay(display)) {
        choice.audio = display;
    } else {
        choice.video = display;
    }
    QMenu* menu = target == Target::kSource ? sourceMenu_ : sequenceMenu_;
    for (QAction* action : menu->actions()) {
        if (action->isCheckable() && action->data().toInt() == static_cast<int>(display)) {
            action->setChecked(true); // its group unchecks the others
        }
    }
}

} // namespace host

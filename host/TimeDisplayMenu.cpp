#include "TimeDisplayMenu.h"

#include "QtText.h"
#include "TimeDisplayNames.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/TimeDisplayChoice.h"

#include <QActionGroup>

namespace host {

TimeDisplayMenu::TimeDisplayMenu(QWidget* parent)
    : QMenu(Localized("$$$/Corvala/Host/Menu/TimeDisplay=Time Display"), parent) {
    setObjectName(QStringLiteral("timeDisplayMenu"));
    AddTargetMenu(Target::kSource, Localized("$$$/Corvala/Host/Menu/SourceTime=Source"));
    AddTargetMenu(Target::kSequence, Localized("$$$/Corvala/Host/Menu/SequenceTime=Sequence"));
    connect(this, &QMenu::aboutToShow, this, [this] { Refresh(); });
}

void TimeDisplayMenu::SetSequenceAccess(CurrentSequence current, ApplySettings apply) {
    currentSequence_ = std::move(current);
    applySettings_ = std::move(apply);
}

void TimeDisplayMenu::Refresh() {
    const KSL::InterfaceRef<BE::ISequence> sequence =
        currentSequence_ ? currentSequence_() : KSL::InterfaceRef<BE::ISequence>();
    if (sequence) {
        const BE::SequenceSettings settings = sequence->GetSettings();
        sequence_.video = settings.videoTimeDisplay;
        sequence_.audio = settings.audioTimeDisplay;
    }
    CheckChoices(Target::kSequence);
}

void TimeDisplayMenu::CheckChoices(Target target) {
    const Choice& choice = target == Target::kSource ? source_ : sequence_;
    QMenu* menu = target == Target::kSource ? sourceMenu_ : sequenceMenu_;
    for (QAction* action : menu->actions()) {
        if (action->isCheckable()) {
            const int display = action->data().toInt();
            action->setChecked(display == choice.video || display == choice.audio);
        }
    }
}

zelmediatypes::TimeDisplay TimeDisplayMenu::GetVideoTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.video : sequence_.video;
}

zelmediatypes::TimeDisplay TimeDisplayMenu::GetAudioTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.audio : sequence_.audio;
}

void TimeDisplayMenu::AddTargetMenu(Target target, const QString& title) {
    QMenu* menu = addMenu(title);
    (target == Target::kSource ? sourceMenu_ : sequenceMenu_) = menu;
    auto addGroup = [&](std::span<const zelmediatypes::TimeDisplay> displays,
                        zelmediatypes::TimeDisplay chosen) {
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
    // Two choices in one menu: each under its heading, one checked in each.
    const Choice& choice = target == Target::kSource ? source_ : sequence_;
    menu->addSection(Localized("$$$/Corvala/Host/Menu/VideoTime=Video"));
    addGroup(VideoTimeDisplays(), choice.video);
    menu->addSection(Localized("$$$/Corvala/Host/Menu/AudioTime=Audio"));
    addGroup(AudioTimeDisplays(), choice.audio);
}

void TimeDisplayMenu::Choose(Target target, zelmediatypes::TimeDisplay display) {
    Choice& choice = target == Target::kSource ? source_ : sequence_;
    const char* station = target == Target::kSource ? UIF::kStation_SourceTimeDisplayChanged
                                                    : UIF::kStation_SequenceTimeDisplayChanged;
    if (zelmediatypes::IsAudioTimeDisplay(display)) {
        choice.audio = display;
    } else {
        choice.video = display;
    }
    const KSL::InterfaceRef<BE::ISequence> sequence =
        target == Target::kSequence && currentSequence_ ? currentSequence_()
                                                        : KSL::InterfaceRef<BE::ISequence>();
    if (sequence && applySettings_) {
        BE::SequenceSettings settings = sequence->GetSettings();
        settings.videoTimeDisplay = choice.video;
        settings.audioTimeDisplay = choice.audio;
        if (settings != sequence->GetSettings()) {
            applySettings_(sequence, settings);
        }
    }
    UIF::AnnounceTimeDisplayChoice(KSL::StationID(station), display);
}

} // namespace host

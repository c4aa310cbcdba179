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
}

zelmediatypes::TimeDisplay TimeDisplayMenu::GetVideoTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.video : sequence_.video;
}

zelmediatypes::TimeDisplay TimeDisplayMenu::GetAudioTimeDisplay(Target target) const {
    return target == Target::kSource ? source_.audio : sequence_.audio;
}

void TimeDisplayMenu::AddTargetMenu(Target target, const QString& title) {
    QMenu* menu = addMenu(title);
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
    UIF::AnnounceTimeDisplayChoice(KSL::StationID(station), display);
}

} // namespace host

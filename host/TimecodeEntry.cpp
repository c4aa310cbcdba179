#include "TimecodeEntry.h"

#include "QtText.h"
#include "zelmediatypes/TimeLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <stdexcept>

namespace host {

TimecodeEntry::TimecodeEntry(JumpSink jump, QWidget* parent)
    : QWidget(parent)
    , jump_(std::move(jump))
    , field_(new QLineEdit(this))
    , problem_(new QLabel(this)) {
    field_->setObjectName(QStringLiteral("monitorTimecodeEntry"));
    const QString name =
        Localized("$$$/Corvala/Host/Monitor/TimecodeEntry=Playhead time: type a time and press "
                  "Return to go there");
    field_->setToolTip(name);
    field_->setAccessibleName(name);
    field_->setMaximumWidth(160);
    problem_->setObjectName(QStringLiteral("monitorTimecodeProblem"));
    problem_->setStyleSheet(QStringLiteral("color: #e05050"));
    problem_->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(field_);
    layout->addWidget(problem_, 1);
    connect(field_, &QLineEdit::returnPressed, this, [this] { Commit(); });
    connect(field_, &QLineEdit::textEdited, this, [this] { problem_->hide(); });
}

void TimecodeEntry::ShowTime(zelmediatypes::TickTime time, zelmediatypes::TimeDisplay display,
                             const zelmediatypes::FrameRate& rate) {
    display_ = display;
    rate_ = rate;
    field_->setEnabled(true);
    if (field_->hasFocus() && field_->isModified()) {
        return; // the person's typing is kept
    }
    QString label = QStringLiteral("--");
    try {
        label = QString::fromStdString(zelmediatypes::FormatTimeLabel(time, display, rate));
    } catch (const std::invalid_argument&) {
        // A display not chosen yet, or one without labels here.
    }
    field_->setText(label);
    field_->setModified(false);
}

void TimecodeEntry::Clear() {
    field_->clear();
    field_->setEnabled(false);
    problem_->hide();
}

QString TimecodeEntry::GetProblem() const {
    return problem_->isHidden() ? QString() : problem_->text();
}

void TimecodeEntry::Commit() {
    const QString typed = field_->text().trimmed();
    zelmediatypes::TimeLabelParse parse;
    try {
        parse = zelmediatypes::ParseTimeLabel(typed.toStdString(), display_, rate_);
    } catch (const std::invalid_argument&) {
        parse.error = "the time display has no labels to read";
    }
    if (!parse.time) {
        problem_->setText(Localized("$$$/Corvala/Host/Monitor/BadTime=Cannot go to \"%1\": %2")
                              .arg(typed, QString::fromStdString(parse.error)));
        problem_->show();
        return;
    }
    problem_->hide();
    field_->setModified(false);
    jump_(*parse.time);
}

} // namespace host

#include "RecoveryPrompt.h"

#include "QtText.h"
#include "UIF/MessageBox.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace host {

RecoveryChoice AskToRecover(const RecoveryOffer& offer) {
    const QString text =
        offer.projectPath.empty()
            ? Localized("$$$/Corvala/Host/Recovery/AskUntitled=The untitled project, never "
                        "saved, has %1 changes that were not saved when Corvala last "
                        "stopped.\n\nRecover them? Yes applies them to a new project; No keeps "
                        "them aside in a file named with today's date.")
                  .arg(static_cast<qulonglong>(offer.changeCount))
            : Localized("$$$/Corvala/Host/Recovery/Ask=The project \"%1\" has %2 changes that "
                        "were not saved when Corvala last stopped.\n\nRecover them? Yes applies "
                        "them to the project; No keeps them aside in a file named with today's "
                        "date.")
                  .arg(QFileInfo(QString::fromStdString(offer.projectPath)).fileName())
                  .arg(static_cast<qulonglong>(offer.changeCount));
    const UIF::MBResult::Type answer = UIF::MessageBoxW(
        ToUTF16(text),
        ToUTF16(Localized("$$$/Corvala/Host/Recovery/Title=Recover Unsaved Changes")),
        UIF::MBFlag::kYesNo, UIF::MBIcon::kQuestion, UIF::MBResult::kYes);
    return answer == UIF::MBResult::kYes ? RecoveryChoice::kRecover : RecoveryChoice::kDiscard;
}

void TellJournalStopped(const std::string& journalPath, const std::string& reason) {
    const QString text =
        Localized("$$$/Corvala/Host/Journal/Stopped=Corvala can no longer record your changes in "
                  "the edit journal %1: %2.\n\nYour work since the last save is not protected "
                  "against a crash until you save the project.")
            .arg(QString::fromStdString(journalPath), QString::fromStdString(reason));
    UIF::MessageBoxW(ToUTF16(text),
                     ToUTF16(Localized("$$$/Corvala/Host/Journal/StoppedTitle=Edit Journal")),
                     UIF::MBFlag::kOK, UIF::MBIcon::kWarning, UIF::MBResult::kOK);
}

std::string UntitledJournalPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return folder.isEmpty()
               ? std::string()
               : QDir(folder).filePath(QStringLiteral("untitled.journal")).toStdString();
}

JournalPolicy MakeJournalPolicy(RecoveryRequest request, bool interactive,
                                std::function<void(const std::string&)> reportProblem) {
    JournalPolicy policy;
    policy.reportProblem = std::move(reportProblem);
    policy.untitledJournalPath = UntitledJournalPath();
    if (interactive) {
        policy.tellStopped = &TellJournalStopped;
    }
    switch (request) {
    case RecoveryRequest::kRecover:
        policy.choose = [](const RecoveryOffer&) {
            return RecoveryChoice::kRecover;
        };
        break;
    case RecoveryRequest::kDiscard:
        policy.choose = [](const RecoveryOffer&) {
            return RecoveryChoice::kDiscard;
        };
        break;
    case RecoveryRequest::kAsk:
        if (interactive) {
            policy.choose = &AskToRecover;
        } else {
            policy.choose = [](const RecoveryOffer&) {
                return RecoveryChoice::kLeaveAlone;
            };
            policy.journalNewChanges = false;
        }
        break;
    }
    return policy;
}

} // namespace host

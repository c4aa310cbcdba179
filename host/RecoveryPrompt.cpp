#include "RecoveryPrompt.h"

#include "QtText.h"
#include "UIF/MessageBox.h"

#include <QFileInfo>

namespace host {

RecoveryChoice AskToRecover(const RecoveryOffer& offer) {
    const QString name = QFileInfo(QString::fromStdString(offer.projectPath)).fileName();
    const QString text =
        Localized("$$$/Corvala/Host/Recovery/Ask=The project \"%1\" has %2 changes that were not "
                  "saved when Corvala last stopped.\n\nRecover them? Yes applies them to the "
                  "project; No keeps them aside in a file named with today's date.")
            .arg(name)
            .arg(static_cast<qulonglong>(offer.changeCount));
    const UIF::MBResult::Type answer = UIF::MessageBoxW(
        ToUTF16(text),
        ToUTF16(Localized("$$$/Corvala/Host/Recovery/Title=Recover Unsaved Changes")),
        UIF::MBFlag::kYesNo, UIF::MBIcon::kQuestion, UIF::MBResult::kYes);
    return answer == UIF::MBResult::kYes ? RecoveryChoice::kRecover : RecoveryChoice::kDiscard;
}

JournalPolicy MakeJournalPolicy(RecoveryRequest request, bool interactive,
                                std::function<void(const std::string&)> reportProblem) {
    JournalPolicy policy;
    policy.reportProblem = std::move(reportProblem);
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

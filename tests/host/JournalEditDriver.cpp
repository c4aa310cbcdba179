// journal_edit_driver PROJECT SEED: opens the project as the host does (its
// edits journalled beside it), then applies the seeded edit script without
// end, writing the number of each edit to standard output once the edit has
// been announced, and saves the project every kEditsPerSave edits, so that
// the script also undoes and redoes steps made before a save. The kill test
// stops it with SIGKILL.

#include "JournalEditScript.h"
#include "ProjectDocument.h"
#include "RecoveryPrompt.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>

constexpr unsigned long kEditsPerSave = 25;

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: journal_edit_driver PROJECT SEED\n";
        return 2;
    }
    QCoreApplication application(argc, argv);
    host::ProjectDocument document;
    document.SetJournalPolicy(host::MakeJournalPolicy(
        host::RecoveryRequest::kDiscard, false, [](const std::string& problem) {
            std::cerr << "journal_edit_driver: " << problem << '\n';
        }));
    if (const auto error = document.Open(argv[1])) {
        std::cerr << "journal_edit_driver: " << error->ToString() << '\n';
        return 1;
    }
    host_test::JournalEditScript script(
        static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10)));
    for (unsigned long edit = 1;; ++edit) {
        script.ApplyNext(document.GetProject());
        const std::string line = std::to_string(edit) + '\n';
        if (::write(STDOUT_FILENO, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
            return 1;
        }
        if (edit % kEditsPerSave == 0) {
            if (const auto error = document.Save()) {
                std::cerr << "journal_edit_driver: " << error->ToString() << '\n';
                return 1;
            }
        }
        QCoreApplication::processEvents();
    }
}

#pragma once

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

class ProjectDocument;

// Saves a copy of the open project beside its file on a timer, as
// "<file>.autosave-0001.json" with a rising number, written atomically and
// keeping the newest kKeptCopies. The project's file and its history's clean
// state are left alone. A project that was never saved, or that has no
// changes since it was saved, is not copied.
class Autosaver : public QObject {
public:
    static constexpr int kDefaultIntervalMinutes = 5;
    static constexpr std::size_t kKeptCopies = 5;

    // reportProblem hears a copy that could not be written; the copies before it stay.
    Autosaver(ProjectDocument& document, std::function<void(const std::string&)> reportProblem);

    // 0 turns saving copies off.
    void SetIntervalMinutes(int minutes);
    int GetIntervalMinutes() const { return intervalMinutes_; }

    // Saves a copy now when there is one to save; returns its path.
    std::optional<std::string> SaveCopy();

    // The copies of the project file at that path, oldest first.
    static std::vector<std::string> CopiesOf(const std::string& projectPathUtf8);

private:
    ProjectDocument& document_;
    std::function<void(const std::string&)> reportProblem_;
    int intervalMinutes_ = 0;
    QTimer timer_;
};

} // namespace host

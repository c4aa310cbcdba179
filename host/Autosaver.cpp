#include "Autosaver.h"

#include "BE/ProjectFile.h"
#include "ProjectDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

namespace host {
namespace {

constexpr int kNumberDigits = 4;

QString CopyPrefix(const QFileInfo& project) {
    return project.fileName() + QStringLiteral(".autosave-");
}

// The copies' numbers with their paths, ascending.
std::vector<std::pair<long long, QString>> NumberedCopies(const QFileInfo& project) {
    const QRegularExpression pattern(
        QStringLiteral("^%1(\\d+)\\.json$").arg(QRegularExpression::escape(CopyPrefix(project))));
    std::vector<std::pair<long long, QString>> copies;
    for (const QString& name : project.dir().entryList(QDir::Files)) {
        const QRegularExpressionMatch match = pattern.match(name);
        if (match.hasMatch()) {
            copies.emplace_back(match.captured(1).toLongLong(), project.dir().filePath(name));
        }
    }
    std::sort(copies.begin(), copies.end());
    return copies;
}

} // namespace

Autosaver::Autosaver(ProjectDocument& document,
                     std::function<void(const std::string&)> reportProblem)
    : document_(document)
    , reportProblem_(std::move(reportProblem)) {
    connect(&timer_, &QTimer::timeout, this, [this] { SaveCopy(); });
}

void Autosaver::SetIntervalMinutes(int minutes) {
    intervalMinutes_ = std::max(0, minutes);
    if (intervalMinutes_ == 0) {
        timer_.stop();
    } else {
        timer_.start(intervalMinutes_ * 60 * 1000);
    }
}

std::vector<std::string> Autosaver::CopiesOf(const std::string& projectPathUtf8) {
    std::vector<std::string> paths;
    for (const auto& copy : NumberedCopies(QFileInfo(QString::fromStdString(projectPathUtf8)))) {
        paths.push_back(copy.second.toStdString());
    }
    return paths;
}

std::optional<std::string> Autosaver::SaveCopy() {
    if (document_.GetFilePath().empty() || !document_.IsModified()) {
        return std::nullopt;
    }
    const QFileInfo project(QString::fromStdString(document_.GetFilePath()));
    const auto copies = NumberedCopies(project);
    const long long number = copies.empty() ? 1 : copies.back().first + 1;
    const QString path = project.dir().filePath(
        CopyPrefix(project) + QStringLiteral("%1.json").arg(number, kNumberDigits, 10, QChar('0')));
    const BE::SerializedProject serialized = BE::SerializeProject(document_.GetProject());
    if (serialized.error) {
        reportProblem_("the project could not be copied for autosave: " +
                       serialized.error->ToString());
        return std::nullopt;
    }
    QSaveFile file(path);
    const auto size = static_cast<qint64>(serialized.bytes.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(serialized.bytes.data(), size) != size ||
        !file.commit()) {
        reportProblem_("the autosave copy " + path.toStdString() +
                       " could not be written: " + file.errorString().toStdString());
        return std::nullopt;
    }
    // Only once the new copy is complete do the oldest go.
    const std::size_t total = copies.size() + 1;
    for (std::size_t i = 0; i + kKeptCopies < total; ++i) {
        QFile::remove(copies[i].second);
    }
    return path.toStdString();
}

} // namespace host

#include "BE/ProjectFile.h"

#include "BE/EditJournal.h"
#include "JsonReader.h"
#include "KSL/Exception.h"
#include "ProjectJson.h"
#include "model/Project.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <algorithm>

namespace BE {
namespace {

ProjectFileError SyntaxErrorAt(std::string_view bytes,
                               const platform::core::JsonSyntaxError& error) {
    const std::size_t offset = std::min(error.offset, bytes.size());
    const std::string_view before = bytes.substr(0, offset);
    const std::size_t line =
        1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t lineStart = before.rfind('\n');
    const std::size_t column =
        offset - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1;
    return {"line " + std::to_string(line) + ", column " + std::to_string(column), error.problem};
}

ProjectFileError ValueError(const platform::core::JsonValueError& error) {
    return {error.GetPath().empty() ? std::string("top level") : error.GetPath(), error.what()};
}

} // namespace

OpenProjectResult ParseProject(std::string_view fileBytes) {
    std::optional<platform::core::JsonSyntaxError> syntaxError;
    const platform::core::JsonTree tree = platform::core::JsonTree::Parse(fileBytes, syntaxError);
    if (syntaxError) {
        return {nullptr, SyntaxErrorAt(fileBytes, *syntaxError), {}};
    }
    try {
        const platform::core::JsonReader root(tree, "");
        return {
            KSL::InterfaceRef<IProject>(platform::core::ProjectFromJson(root)), std::nullopt, {}};
    } catch (const platform::core::JsonValueError& error) {
        return {nullptr, ValueError(error), {}};
    }
}

OpenProjectResult ReadProjectFile(const std::string& pathUtf8) {
    QFile file(QString::fromStdString(pathUtf8));
    if (!file.open(QIODevice::ReadOnly)) {
        return {nullptr, ProjectFileError{pathUtf8, file.errorString().toStdString()}, {}};
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return {nullptr, ProjectFileError{pathUtf8, file.errorString().toStdString()}, {}};
    }
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    OpenProjectResult opened = ParseProject(text);
    if (opened.project) {
        opened.fileDigest = ProjectFileDigest(text);
    }
    return opened;
}

SerializedProject SerializeProject(const KSL::InterfaceRef<IProject>& project) {
    if (!project) {
        throw KSL::Exception("SerializeProject needs a project");
    }
    try {
        return {platform::core::ProjectJsonText(*project), std::nullopt};
    } catch (const platform::core::JsonValueError& error) {
        return {{}, ValueError(error)};
    }
}

std::optional<ProjectFileError> WriteProjectFile(const KSL::InterfaceRef<IProject>& project,
                                                 const std::string& pathUtf8,
                                                 std::string* writtenDigest) {
    const SerializedProject serialized = SerializeProject(project);
    if (serialized.error) {
        return serialized.error;
    }
    QSaveFile file(QString::fromStdString(pathUtf8));
    if (!file.open(QIODevice::WriteOnly)) {
        return ProjectFileError{pathUtf8, file.errorString().toStdString()};
    }
    const auto size = static_cast<qint64>(serialized.bytes.size());
    if (file.write(serialized.bytes.data(), size) != size || !file.commit()) {
        return ProjectFileError{pathUtf8, file.errorString().toStdString()};
    }
    project->GetUndoHistory().MarkClean();
    if (writtenDigest) {
        *writtenDigest = ProjectFileDigest(serialized.bytes);
    }
    return std::nullopt;
}

} // namespace BE

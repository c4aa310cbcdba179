#include "BE/EditJournal.h"

#include "EditRecorder.h"
#include "JournalLines.h"
#include "KSL/Exception.h"
#include "ModelEdit.h"
#include "file/JsonReader.h"
#include "file/JsonText.h"
#include "model/Project.h"

#include <QByteArray>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace BE {

using platform::core::EditRecorder;

// The journal file's writer, and the project's recorder while it is attached.
// Lines are written with write(2), so a record is in the operating system's
// hands before its change is announced and survives the process being
// killed; the timed flush makes it survive a power cut too.
struct EditJournal::Impl final : EditRecorder {
    KSL::InterfaceRef<IProject> project;
    platform::core::Project* model = nullptr;
    std::string path;
    int fd = -1;
    std::uint64_t size = 0;
    std::optional<std::string> problem;
    std::function<void(const std::string&)> onStop;
    QTimer flushTimer;

    ~Impl() override { Close(); }

    bool Open(int flags) {
        fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | flags, 0644);
        if (fd < 0) {
            problem = path + ": " + std::strerror(errno);
            return false;
        }
        flushTimer.setSingleShot(true);
        flushTimer.setInterval(kFlushDelayMs);
        QObject::connect(&flushTimer, &QTimer::timeout, [this] { Flush(); });
        return true;
    }

    void Attach() { model->SetRecorder(this); }

    // A flush that fails while closing has no one left to tell.
    void Close() {
        if (model) {
            model->SetRecorder(nullptr);
            model = nullptr;
        }
        flushTimer.stop();
        if (fd >= 0) {
            ::fdatasync(fd);
            ::close(fd);
            fd = -1;
        }
    }

    // The handler hears of it from the event loop: a failing write happens
    // inside a change, where the person must not be asked anything.
    void Fail(const std::string& what) {
        problem = "the edit journal " + path + " stopped recording: " + what;
        Close();
        if (onStop) {
            QTimer::singleShot(0, &flushTimer, [this, what] { onStop(what); });
        }
    }

    // Why the path no longer leads to the open file, or null. A journal whose
    // folder was removed or whose file was replaced still takes writes, into
    // a file no one will find after a crash.
    const char* FileLost() const {
        struct stat open {};
        struct stat named {};
        if (::fstat(fd, &open) != 0 || open.st_nlink == 0) {
            return "the file or its folder was deleted";
        }
        if (::stat(path.c_str(), &named) != 0 || named.st_ino != open.st_ino ||
            named.st_dev != open.st_dev) {
            return "the file was replaced";
        }
        return nullptr;
    }

    bool Write(std::string_view line) {
        while (!line.empty()) {
            const ssize_t written = ::write(fd, line.data(), line.size());
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                Fail(std::strerror(errno));
                return false;
            }
            size += static_cast<std::uint64_t>(written);
            line.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    void Append(std::string_view payload) {
        if (fd >= 0 && Write(platform::core::JournalLine(payload)) && !flushTimer.isActive()) {
            flushTimer.start();
        }
    }

    void Flush() {
        flushTimer.stop();
        if (fd < 0) {
            return;
        }
        if (::fdatasync(fd) != 0) {
            Fail(std::strerror(errno));
        } else if (const char* lost = FileLost()) {
            Fail(lost);
        }
    }

    bool Truncate(std::uint64_t length) {
        if (::ftruncate(fd, static_cast<off_t>(length)) != 0) {
            Fail(std::strerror(errno));
            return false;
        }
        size = length;
        return true;
    }

    // The description, or null when one cannot be written, after which the
    // journal has stopped.
    std::optional<std::string> Described(const std::function<std::string()>& describe) {
        try {
            return describe();
        } catch (const platform::core::JsonValueError& error) {
            Fail("a change holds what a project file cannot: " + error.GetPath() + ": " +
                 error.what());
            return std::nullopt;
        }
    }

    Mark RecordEdit(const platform::core::ModelEdit& edit, UndoMode mode,
                    std::u16string_view actionName) override {
        const Mark mark = size;
        if (fd < 0) {
            return mark;
        }
        std::optional<std::string> described = Described([&edit] { return edit.Describe(); });
        if (!described) {
            return mark;
        }
        std::string payload = "{\"edit\":" + *described;
        if (mode == UndoMode::kAsUndoStep && !actionName.empty()) {
            payload += ",\"name\":";
            platform::core::AppendJsonString(actionName, payload);
        }
        payload += mode == UndoMode::kAsUndoStep ? ",\"op\":\"edit\",\"undo\":true}"
                                                 : ",\"op\":\"edit\",\"undo\":false}";
        Append(payload);
        return mark;
    }

    // An undo or redo names what it changes too, for a replay whose history
    // does not hold the step (one made before the journal began). A step
    // whose target has left the project changes nothing, and says so by null.
    void RecordStep(std::string_view op, std::string_view key,
                    const std::function<std::string()>& describe) {
        if (fd < 0) {
            return;
        }
        std::optional<std::string> described = Described([&describe] {
            try {
                return describe();
            } catch (const KSL::Exception&) {
                return std::string("null");
            }
        });
        if (described) {
            Append("{\"op\":\"" + std::string(op) + "\",\"" + std::string(key) +
                   "\":" + *described + "}");
        }
    }

    void RecordUndo(const platform::core::ModelEdit& step) override {
        RecordStep("undo", "revert", [&step] { return step.DescribeRevert(); });
    }
    void RecordRedo(const platform::core::ModelEdit& step) override {
        RecordStep("redo", "apply", [&step] { return step.Describe(); });
    }
    void RecordHistoryCleared() override { Append(R"({"op":"clearHistory"})"); }
    void Retract(Mark mark) override {
        if (fd >= 0 && mark < size) {
            Truncate(mark);
        }
    }
};

namespace {

platform::core::Project& ModelOf(const KSL::InterfaceRef<IProject>& project) {
    auto* model = platform::core::ImplementationOf<platform::core::Project>(project);
    if (!model) {
        throw KSL::Exception("the edit journal needs a project of this platform");
    }
    return *model;
}

} // namespace

EditJournal::EditJournal(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

EditJournal::~EditJournal() = default;

std::unique_ptr<EditJournal> EditJournal::Start(const KSL::InterfaceRef<IProject>& project,
                                                const std::string& pathUtf8,
                                                const std::string& projectDigest,
                                                std::string& error) {
    auto impl = std::make_unique<Impl>();
    impl->project = project;
    impl->model = &ModelOf(project);
    impl->path = pathUtf8;
    if (!impl->Open(O_CREAT | O_TRUNC) ||
        !impl->Write(platform::core::JournalHeaderLine(projectDigest))) {
        error = *impl->problem;
        return nullptr;
    }
    impl->Flush();
    impl->Attach();
    return std::unique_ptr<EditJournal>(new EditJournal(std::move(impl)));
}

std::unique_ptr<EditJournal> EditJournal::Continue(const KSL::InterfaceRef<IProject>& project,
                                                   const std::string& pathUtf8,
                                                   const JournalReading& journal,
                                                   std::size_t keptRecords, std::string& error) {
    auto impl = std::make_unique<Impl>();
    impl->project = project;
    impl->model = &ModelOf(project);
    impl->path = pathUtf8;
    const std::uint64_t kept =
        keptRecords == 0
            ? journal.headerBytes
            : journal.recordEnds.at(std::min(keptRecords, journal.recordEnds.size()) - 1);
    if (!impl->Open(0) || !impl->Truncate(kept)) {
        error = *impl->problem;
        return nullptr;
    }
    impl->Flush();
    impl->Attach();
    return std::unique_ptr<EditJournal>(new EditJournal(std::move(impl)));
}

void EditJournal::Restart(const std::string& projectDigest) {
    if (impl_->fd >= 0 && impl_->Truncate(0) &&
        impl_->Write(platform::core::JournalHeaderLine(projectDigest))) {
        impl_->Flush();
    }
}

void EditJournal::Remove() {
    impl_->Close();
    ::unlink(impl_->path.c_str());
}

void EditJournal::Flush() {
    impl_->Flush();
}

void EditJournal::SetStopHandler(std::function<void(const std::string& reason)> handler) {
    impl_->onStop = std::move(handler);
}

const std::string& EditJournal::GetPath() const {
    return impl_->path;
}

const std::optional<std::string>& EditJournal::GetProblem() const {
    return impl_->problem;
}

} // namespace BE

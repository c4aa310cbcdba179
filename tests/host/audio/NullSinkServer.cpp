#include "NullSinkServer.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QThread>

#include <cstdlib>

namespace host_audio_test {

NullSinkServer::NullSinkServer() {
    if (!folder_.isValid()) {
        problem_ = "no temporary folder for its runtime files";
        return;
    }
    const QString socket = folder_.filePath("native");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Its cookie, state and socket stay in the folder, apart from any server of the machine.
    environment.insert("HOME", folder_.path());
    environment.insert("XDG_RUNTIME_DIR", folder_.path());
    environment.insert("XDG_CONFIG_HOME", folder_.filePath("config"));
    environment.remove("PULSE_SERVER");
    server_.setProcessEnvironment(environment);
    server_.setProcessChannelMode(QProcess::MergedChannels);
    server_.start(
        "pulseaudio",
        {"--daemonize=no", "--exit-idle-time=-1", "-n", "--use-pid-file=no",
         "--load=module-null-sink sink_name=null_sink rate=48000 format=float32le norewinds=1",
         "--load=module-native-protocol-unix socket=" + socket, "--log-target=stderr"});
    if (!server_.waitForStarted(5000)) {
        problem_ = "pulseaudio did not start: " + server_.errorString().toStdString();
        return;
    }
    const QDeadlineTimer deadline(5000);
    while (!QFileInfo::exists(socket)) {
        if (server_.state() != QProcess::Running || deadline.hasExpired()) {
            server_.kill();
            server_.waitForFinished(1000);
            problem_ = "pulseaudio made no socket: " + server_.readAll().toStdString();
            return;
        }
        QThread::msleep(10);
    }
    setenv("PULSE_SERVER", ("unix:" + socket).toLocal8Bit().constData(), 1);
}

NullSinkServer::~NullSinkServer() {
    if (server_.state() != QProcess::NotRunning) {
        server_.terminate();
        if (!server_.waitForFinished(3000)) {
            server_.kill();
            server_.waitForFinished(1000);
        }
    }
}

} // namespace host_audio_test

#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <string>

namespace host_audio_test {

// A sound server of the test's own: PulseAudio with one null sink (a device that plays into
// nothing at the pace of real time), in a temporary runtime folder, made this process's
// server. Must start before Qt Multimedia first looks for devices, which it does once.
class NullSinkServer {
public:
    // Starts the server and waits up to 5 s for its socket; on failure Problem() says why.
    NullSinkServer();
    NullSinkServer(const NullSinkServer&) = delete;
    NullSinkServer& operator=(const NullSinkServer&) = delete;
    ~NullSinkServer();

    bool IsRunning() const { return problem_.empty(); }
    const std::string& Problem() const { return problem_; }

private:
    QTemporaryDir folder_;
    QProcess server_;
    std::string problem_;
};

} // namespace host_audio_test

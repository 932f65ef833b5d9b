#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>
#include <sys/types.h>
#include <vector>

namespace kalvo::test {

/** A shell command that runs beside the test and is killed with it. No QProcess: that blinds the thread sanitizer. */
class ChildProcess {
public:
    explicit ChildProcess(const QString& command);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

private:
    pid_t pid_ = 0;
};

/**
 * A sound server of its own with null sinks that keep real time, for tests of real devices without hardware.
 *
 * While one lives, this process and its children find it and no other: the environment variables for it are set, and
 * are put back at the end. One at a time. Works as root.
 */
class PulseServer {
public:
    /** False where the sound server is not installed. */
    static bool IsInstalled();

    /** The sinks run at 44,100 Hz in stereo; the first is the default output. Fails the test when it does not start. */
    explicit PulseServer(QStringList sinks = {QStringLiteral("haupt"), QStringLiteral("kopfhoerer")});
    ~PulseServer();

    /** What SDL calls a sink. */
    static QString DeviceName(const QString& sink);

    /** Plugs a sound card in. */
    bool AddSink(const QString& name);
    /** Pulls it out: its streams end or move, as the server decides. */
    bool RemoveSink(const QString& name);

    /** The server dies without a farewell. */
    void Kill();
    /** Starts it again with the sinks given at first. */
    bool Start();

private:
    void SetEnvironment(const char* name, const QByteArray& value);
    /** Output of pactl with these arguments; null on failure. */
    QByteArray Control(const QString& arguments) const;

    QTemporaryDir folder_;
    QStringList sinks_;
    std::vector<std::pair<const char*, QByteArray>> before_; ///< variables; null: it was not set
    std::optional<ChildProcess> daemon_;
};

/** Records what a sink plays, from the construction on: interleaved stereo floats at 44,100 Hz. */
class PulseRecording {
public:
    static constexpr int kSampleRate = 44100;

    explicit PulseRecording(const QString& sink);

    /** Waits until so many seconds are recorded; false when they do not come within twenty seconds more. */
    bool WaitFor(double seconds);
    /** Everything recorded so far. */
    std::vector<float> Stereo() const;
    /** The same as one channel, the mean of both. */
    std::vector<float> Mono() const;

private:
    std::size_t RecordedFrames() const;

    QTemporaryDir folder_;
    QString file_;
    ChildProcess recorder_;
};

} // namespace kalvo::test

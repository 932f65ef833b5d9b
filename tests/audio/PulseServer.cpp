#include "PulseServer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include <algorithm>

namespace kalvo::test {

namespace {

QString SinkArguments(const QString& name) {
    return QStringLiteral("sink_name=%1 sink_properties=device.description=Karte_%2").arg(name, name.toUpper());
}

} // namespace

bool PulseServer::Installed() {
    return !QStandardPaths::findExecutable(QStringLiteral("pulseaudio")).isEmpty();
}

PulseServer::PulseServer() {
    qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    qputenv("PULSE_SERVER", "unix:" + folder_.path().toUtf8() + "/native");
    qputenv("SDL_AUDIODRIVER", "pulseaudio");
    Start();
}

PulseServer::~PulseServer() {
    Stop();
    for (const char* name : {"XDG_RUNTIME_DIR", "PULSE_SERVER", "SDL_AUDIODRIVER"})
        qunsetenv(name);
}

void PulseServer::Start() {
    server_.start(
        QStringLiteral("pulseaudio"),
        {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
         QStringLiteral("--use-pid-file=no"), QStringLiteral("-L"),
         QStringLiteral("module-null-sink ") + SinkArguments(QStringLiteral("a")), QStringLiteral("-L"),
         QStringLiteral("module-null-sink ") + SinkArguments(QStringLiteral("b")), QStringLiteral("-L"),
         QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=%1/native").arg(folder_.path())});
    const QDeadlineTimer deadline(20000);
    while (!Control({QStringLiteral("info")}).contains(QLatin1String("Server Name")))
        ASSERT_FALSE(deadline.hasExpired()) << "the sound server does not come up";
}

void PulseServer::Stop() {
    server_.kill();
    server_.waitForFinished();
    QFile::remove(folder_.filePath(QStringLiteral("native")));
}

QString PulseServer::Control(const QStringList& arguments) {
    QProcess control;
    control.start(QStringLiteral("pactl"), arguments);
    control.waitForFinished();
    return QString::fromUtf8(control.readAllStandardOutput());
}

void PulseServer::UnloadSink(const QString& name) {
    const QStringList modules =
        Control({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules")}).split(u'\n');
    for (const QString& line : modules) {
        if (line.contains(QStringLiteral("sink_name=%1 ").arg(name)))
            Control({QStringLiteral("unload-module"), line.section(u'\t', 0, 0)});
    }
}

void PulseServer::LoadSink(const QString& name) {
    Control(QStringList{QStringLiteral("load-module"), QStringLiteral("module-null-sink")} +
            SinkArguments(name).split(u' '));
}

bool PulseServer::SoundArrivesAt(const QString& sink) {
    QProcess recorder;
    recorder.start(QStringLiteral("parec"), {QStringLiteral("--raw"), QStringLiteral("--latency-msec=20"),
                                             QStringLiteral("-d"), sink + QStringLiteral(".monitor")});
    const QDeadlineTimer deadline(10000);
    bool heard = false;
    while (!heard && !deadline.hasExpired() && recorder.state() != QProcess::NotRunning) {
        recorder.waitForReadyRead(100);
        const QByteArray bytes = recorder.readAllStandardOutput();
        heard = std::any_of(bytes.begin(), bytes.end(), [](char byte) { return byte != 0; });
    }
    recorder.kill();
    recorder.waitForFinished();
    return heard;
}

} // namespace kalvo::test

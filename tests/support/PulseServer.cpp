#include "support/PulseServer.h"

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include <cstring>

namespace kalvo::test {

namespace {

constexpr std::chrono::seconds kPatience{20};
constexpr std::size_t kFrameBytes = 2 * sizeof(float);

QString SinkModule(const QString& name) {
    return QStringLiteral("module-null-sink sink_name=%1 rate=44100 channels=2 sink_properties=device.description=%2")
        .arg(name, PulseServer::DeviceName(name));
}

} // namespace

bool PulseServer::IsInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("pulseaudio")).isEmpty();
}

QString PulseServer::DeviceName(const QString& sink) {
    return QStringLiteral("Pruefkarte-") + sink;
}

PulseServer::PulseServer(QStringList sinks) : sinks_(std::move(sinks)) {
    const QByteArray folder = folder_.path().toLocal8Bit();
    SetEnvironment("XDG_RUNTIME_DIR", folder);
    SetEnvironment("PULSE_RUNTIME_PATH", folder);
    SetEnvironment("PULSE_STATE_PATH", folder);
    SetEnvironment("PULSE_SERVER", "unix:" + folder + "/native");
    SetEnvironment("SDL_AUDIODRIVER", "pulseaudio");
    EXPECT_TRUE(Start());
}

PulseServer::~PulseServer() {
    Kill();
    for (const Variable& variable : before_) {
        if (variable.wasSet)
            qputenv(variable.name.constData(), variable.value);
        else
            qunsetenv(variable.name.constData());
    }
}

void PulseServer::SetEnvironment(const char* name, const QByteArray& value) {
    before_.push_back({name, qgetenv(name), qEnvironmentVariableIsSet(name)});
    qputenv(name, value);
}

bool PulseServer::IsRunning() const {
    return daemon_ && daemon_->state() == QProcess::Running;
}

bool PulseServer::Start() {
    Kill();
    QStringList arguments{
        QStringLiteral("-n"),
        QStringLiteral("--daemonize=no"),
        QStringLiteral("--exit-idle-time=-1"),
        QStringLiteral("--use-pid-file=no"),
        QStringLiteral("--disable-shm=yes"),
        QStringLiteral("--load=module-native-protocol-unix auth-anonymous=1 socket=%1/native").arg(folder_.path())};
    for (const QString& sink : sinks_)
        arguments << QStringLiteral("--load=") + SinkModule(sink);
    daemon_ = std::make_unique<QProcess>();
    daemon_->setStandardOutputFile(QProcess::nullDevice());
    daemon_->setStandardErrorFile(folder_.filePath(QStringLiteral("server.log")));
    daemon_->start(QStringLiteral("pulseaudio"), arguments);
    const bool answers = daemon_->waitForStarted() &&
                         WaitUntil([this] { return !Control({QStringLiteral("info")}).isEmpty(); }, kPatience);
    return answers && (sinks_.isEmpty() || !Control({QStringLiteral("set-default-sink"), sinks_.first()}).isNull());
}

void PulseServer::Kill() {
    if (!daemon_)
        return;
    daemon_->kill();
    daemon_->waitForFinished();
    daemon_.reset();
    QFile::remove(folder_.filePath(QStringLiteral("native")));
}

bool PulseServer::AddSink(const QString& name) {
    return !Control(QStringList{QStringLiteral("load-module")} + SinkModule(name).split(QLatin1Char(' '))).isEmpty();
}

bool PulseServer::RemoveSink(const QString& name) {
    const QList<QByteArray> modules =
        Control({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules")}).split('\n');
    for (const QByteArray& module : modules) {
        const bool isThis = module.contains("sink_name=" + name.toUtf8() + ' ');
        if (isThis &&
            !Control({QStringLiteral("unload-module"), QString::fromUtf8(module.split('\t').first())}).isNull())
            return true;
    }
    return false;
}

QByteArray PulseServer::Control(const QStringList& arguments) const {
    QProcess control;
    control.start(QStringLiteral("pactl"), arguments);
    const bool done = control.waitForFinished(10'000) && control.exitStatus() == QProcess::NormalExit;
    if (!done || control.exitCode() != 0)
        return {};
    const QByteArray output = control.readAllStandardOutput();
    return output.isNull() ? QByteArray("") : output;
}

PulseRecording::PulseRecording(const QString& sink) : file_(folder_.filePath(QStringLiteral("aufnahme.raw"))) {
    recorder_.setStandardOutputFile(file_);
    recorder_.setStandardErrorFile(QProcess::nullDevice());
    recorder_.start(QStringLiteral("parec"),
                    {QStringLiteral("--raw"), QStringLiteral("--device=%1.monitor").arg(sink),
                     QStringLiteral("--format=float32le"), QStringLiteral("--rate=%1").arg(kSampleRate),
                     QStringLiteral("--channels=2"), QStringLiteral("--latency-msec=20")});
    EXPECT_TRUE(recorder_.waitForStarted());
    EXPECT_TRUE(WaitUntil([this] { return RecordedFrames() > 0; }, kPatience));
}

PulseRecording::~PulseRecording() {
    recorder_.kill();
    recorder_.waitForFinished();
}

std::size_t PulseRecording::RecordedFrames() const {
    return static_cast<std::size_t>(QFileInfo(file_).size()) / kFrameBytes;
}

bool PulseRecording::WaitFor(double seconds) {
    const auto frames = static_cast<std::size_t>(seconds * kSampleRate);
    const auto patience = kPatience + std::chrono::seconds(static_cast<int>(seconds) + 1);
    return WaitUntil([this, frames] { return RecordedFrames() >= frames; }, patience);
}

std::vector<float> PulseRecording::Stereo() const {
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    const auto frames = static_cast<std::size_t>(bytes.size()) / kFrameBytes;
    std::vector<float> samples(frames * 2);
    std::memcpy(samples.data(), bytes.constData(), frames * kFrameBytes);
    return samples;
}

std::vector<float> PulseRecording::Mono() const {
    const std::vector<float> stereo = Stereo();
    std::vector<float> mono(stereo.size() / 2);
    for (std::size_t i = 0; i < mono.size(); ++i)
        mono[i] = (stereo[2 * i] + stereo[2 * i + 1]) / 2;
    return mono;
}

} // namespace kalvo::test

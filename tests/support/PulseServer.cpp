#include "support/PulseServer.h"

#include "support/WaitUntil.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds kPatience{20};
constexpr std::size_t kFrameBytes = 2 * sizeof(float);

QString SinkModule(const QString& name) {
    return u"module-null-sink sink_name=%1 rate=44100 channels=2 sink_properties=device.description=%2"_s.arg(
        name, PulseServer::DeviceName(name));
}

} // namespace

ChildProcess::ChildProcess(const QString& command) {
    std::string words[] = {"sh", "-c", "exec " + command.toStdString()};
    char* const arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    EXPECT_EQ(posix_spawnp(&pid_, "sh", nullptr, nullptr, arguments, environ), 0);
}

ChildProcess::~ChildProcess() {
    if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

bool PulseServer::IsInstalled() {
    return !QStandardPaths::findExecutable(u"pulseaudio"_s).isEmpty();
}

QString PulseServer::DeviceName(const QString& sink) {
    return u"Pruefkarte-"_s + sink;
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
    for (const auto& [name, value] : before_) {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
}

void PulseServer::SetEnvironment(const char* name, const QByteArray& value) {
    before_.emplace_back(name, qgetenv(name));
    qputenv(name, value);
}

bool PulseServer::Start() {
    Kill();
    QString command =
        u"pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes --log-level=error "
        "'--load=module-native-protocol-unix auth-anonymous=1 socket=%1/native'"_s.arg(folder_.path());
    for (const QString& sink : sinks_)
        command += u" '--load=%1'"_s.arg(SinkModule(sink));
    daemon_.emplace(command + u" >/dev/null 2>&1"_s);
    const bool answers = WaitUntil([this] { return !Control(u"info"_s).isEmpty(); }, kPatience);
    return answers && (sinks_.isEmpty() || !Control(u"set-default-sink "_s + sinks_.first()).isNull());
}

void PulseServer::Kill() {
    daemon_.reset();
    QFile::remove(folder_.filePath(u"native"_s));
}

bool PulseServer::AddSink(const QString& name) {
    return !Control(u"load-module "_s + SinkModule(name)).isEmpty();
}

bool PulseServer::RemoveSink(const QString& name) {
    for (const QByteArray& module : Control(u"list short modules"_s).split('\n')) {
        if (module.contains("sink_name=" + name.toUtf8() + ' ') &&
            !Control(u"unload-module "_s + QString::fromUtf8(module.split('\t').first())).isNull())
            return true;
    }
    return false;
}

QByteArray PulseServer::Control(const QString& arguments) const {
    const QString command = u"exec timeout 10 pactl %1 2>/dev/null"_s.arg(arguments);
    std::FILE* const pipe = popen(command.toUtf8().constData(), "r");
    QByteArray output("");
    char piece[4096];
    while (const std::size_t got = std::fread(piece, 1, sizeof piece, pipe))
        output.append(piece, static_cast<qsizetype>(got));
    return pclose(pipe) == 0 ? output : QByteArray();
}

PulseRecording::PulseRecording(const QString& sink)
    : file_(folder_.filePath(u"aufnahme.raw"_s)),
      recorder_(u"parec --raw --device=%1.monitor --format=float32le --rate=44100 --channels=2 --latency-msec=20 >%2 "
                "2>/dev/null"_s.arg(sink, file_)) {
    EXPECT_TRUE(WaitUntil([this] { return RecordedFrames() > 0; }, kPatience));
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
    std::vector<float> samples(RecordedFrames() * 2);
    const auto bytes = static_cast<qint64>(samples.size() * sizeof(float));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.read(reinterpret_cast<char*>(samples.data()), bytes) == bytes);
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

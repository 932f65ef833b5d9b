#include "PulseServer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <memory>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <vector>

namespace kalvo::test {

namespace {

struct PipeCloser {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};
using Pipe = std::unique_ptr<std::FILE, PipeCloser>;

std::string SinkModule(const std::string& name) {
    return "module-null-sink sink_name=" + name + " sink_properties=device.description=Karte_" +
           char(std::toupper(name[0]));
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
    std::vector<std::string> arguments{
        "pulseaudio",
        "-n",
        "--daemonize=no",
        "--log-level=error",
        "--exit-idle-time=-1",
        "--use-pid-file=no",
        "-L",
        SinkModule("a"),
        "-L",
        SinkModule("b"),
        "-L",
        "module-native-protocol-unix auth-anonymous=1 socket=" + folder_.path().toStdString() + "/native"};
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ASSERT_EQ(posix_spawnp(&server_, "pulseaudio", nullptr, nullptr, pointers.data(), environ), 0);
    const QDeadlineTimer deadline(20000);
    while (Control("info").find("Server Name") == std::string::npos)
        ASSERT_FALSE(deadline.hasExpired()) << "the sound server does not come up";
}

void PulseServer::Stop() {
    kill(server_, SIGKILL);
    waitpid(server_, nullptr, 0);
    QFile::remove(folder_.filePath(QStringLiteral("native")));
}

std::string PulseServer::Control(const std::string& arguments) {
    const Pipe pipe(popen(("exec pactl " + arguments + " 2>/dev/null").c_str(), "r"));
    std::string answer;
    std::array<char, 4096> piece;
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), pipe.get()))
        answer.append(piece.data(), got);
    return answer;
}

void PulseServer::UnloadSink(const std::string& name) {
    std::istringstream modules(Control("list short modules"));
    for (std::string line; std::getline(modules, line);) {
        if (line.find("sink_name=" + name + " ") != std::string::npos)
            Control("unload-module " + line.substr(0, line.find('\t')));
    }
}

void PulseServer::LoadSink(const std::string& name) {
    Control("load-module " + SinkModule(name));
}

bool PulseServer::SoundArrivesAt(const std::string& sink) {
    // Ends by itself after ten seconds, when it has not been closed before.
    const Pipe pipe(popen(("exec timeout 10 parec --raw --latency-msec=20 -d " + sink + ".monitor").c_str(), "r"));
    std::array<char, 4096> piece;
    while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), pipe.get())) {
        if (std::any_of(piece.begin(), piece.begin() + std::ptrdiff_t(got), [](char byte) { return byte != 0; }))
            return true;
    }
    return false;
}

} // namespace kalvo::test

#include "support/SoundMaker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

void Append(QByteArray& bytes, quint32 value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<char>(value >> (8 * i)));
}

/** Raised cosine from 0 to 1 within `length` seconds. */
double SwellAt(double second, double length) {
    return second >= length ? 1 : 0.5 - 0.5 * std::cos(std::numbers::pi * second / length);
}

QByteArray WaveBytes(const SoundSpec& spec) {
    const auto rate = static_cast<quint32>(spec.rate);
    const auto channels = static_cast<quint32>(spec.channels);
    QByteArray data;
    for (qint64 frame = 0; frame < spec.Frames(); ++frame) {
        const double phase = 2 * std::numbers::pi * spec.frequency * static_cast<double>(frame) / spec.rate;
        const double swell = SwellAt(static_cast<double>(frame) / spec.rate, spec.fadeIn);
        for (quint32 channel = 0; channel < channels; ++channel) {
            const double height = swell * (channel == 0 ? spec.amplitude : spec.amplitude / 2);
            Append(data, static_cast<quint32>(std::lround(32767 * height * std::sin(phase))), 2);
        }
    }
    const auto length = static_cast<quint32>(data.size());
    QByteArray bytes("RIFF");
    Append(bytes, 36 + length, 4);
    bytes.append("WAVEfmt ");
    const std::pair<quint32, int> format[] = {
        {16, 4}, {1, 2}, {channels, 2}, {rate, 4}, {rate * channels * 2, 4}, {channels * 2, 2}, {16, 2}};
    for (const auto& [value, count] : format)
        Append(bytes, value, count);
    bytes.append("data");
    Append(bytes, length, 4);
    return bytes + data;
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
}

/** Something that an encoder takes for a JPEG picture. */
QByteArray CoverBytes(int size) {
    QByteArray bytes("\xFF\xD8\xFF\xE0\x00\x10JFIF", 10);
    while (bytes.size() < size)
        bytes.append(static_cast<char>(bytes.size() * 37 % 251));
    return bytes;
}

QStringList TagArguments(const SoundSpec& spec, const QString& titleOption, const QString& artistOption) {
    QStringList arguments;
    for (const auto& [option, value] : {std::pair(titleOption, spec.title), std::pair(artistOption, spec.artist)}) {
        if (!value.isEmpty())
            arguments << option << value;
    }
    return arguments;
}

/** Not by QProcess: its child shares the parent's memory for a moment, which blinds the thread sanitizer. */
void Run(const QString& program, const QStringList& arguments) {
    std::vector<std::string> texts{program.toStdString()};
    for (const QString& argument : arguments)
        texts.push_back(QFile::encodeName(argument).toStdString());
    std::vector<char*> list;
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    ASSERT_EQ(::posix_spawnp(&child, list[0], nullptr, nullptr, list.data(), environ), 0) << texts[0];
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0) << texts[0] << " " << arguments.join(u' ').toStdString();
}

void Encode(const QString& wave, const QString& path, const SoundSpec& spec) {
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == u"mp3") {
        QStringList arguments{u"--quiet"_s};
        if (spec.coverBytes > 0) {
            Write(wave + u".jpg"_s, CoverBytes(spec.coverBytes));
            arguments << u"--ti"_s << wave + u".jpg"_s;
        }
        Run(u"lame"_s, arguments + TagArguments(spec, u"--tt"_s, u"--ta"_s) + spec.options + QStringList{wave, path});
        return;
    }
    const QStringList options =
        QStringList{u"--quiet"_s} + TagArguments(spec, u"--title"_s, u"--artist"_s) + spec.options;
    if (ending == u"ogg") {
        Run(u"oggenc"_s, QStringList{u"--utf8"_s} + options + QStringList{u"-o"_s, path, wave});
    } else {
        ASSERT_EQ(ending, u"opus") << path.toStdString();
        Run(u"opusenc"_s, options + QStringList{wave, path});
    }
}

} // namespace

QString MakeSound(const QString& folder, const QString& name, const SoundSpec& spec) {
    const QString path = QDir(folder).absoluteFilePath(name);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    if (name.endsWith(u".wav"_s, Qt::CaseInsensitive)) {
        Write(path, WaveBytes(spec));
        return path;
    }
    const QTemporaryDir scratch;
    const QString wave = scratch.filePath(u"sound.wav"_s);
    Write(wave, WaveBytes(spec));
    Encode(wave, path, spec);
    return path;
}

} // namespace kalvo::test

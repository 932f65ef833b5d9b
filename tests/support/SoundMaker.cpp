#include "support/SoundMaker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>
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
    Append(bytes, 16, 4);
    Append(bytes, 1, 2);
    Append(bytes, channels, 2);
    Append(bytes, rate, 4);
    Append(bytes, rate * channels * 2, 4);
    Append(bytes, channels * 2, 2);
    Append(bytes, 16, 2);
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

struct TagOption {
    QString SoundSpec::*value;
    const char* lame;
    const char* vorbis;
    const char* opus;
};

constexpr TagOption kTagOptions[] = {
    {&SoundSpec::title, "--tt", "--title", "--title"},
    {&SoundSpec::artist, "--ta", "--artist", "--artist"},
    {&SoundSpec::album, "--tl", "--album", "--album"},
    {&SoundSpec::genre, "--tg", "--genre", "--genre"},
    {&SoundSpec::year, "--ty", "--date", "--date"},
    {&SoundSpec::track, "--tn", "--tracknum", "--tracknumber"},
    {&SoundSpec::comment, "--tc", "--comment=comment", "--comment=comment"},
};

QStringList TagArguments(const SoundSpec& spec, const char* TagOption::*option) {
    QStringList arguments;
    for (const TagOption& tag : kTagOptions) {
        const QString name = QString::fromLatin1(tag.*option);
        const QString& value = spec.*tag.value;
        if (value.isEmpty())
            continue;
        if (name.contains(u'='))
            arguments << name.section(u'=', 0, 0) << name.section(u'=', 1) + u'=' + value;
        else
            arguments << name << value;
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
        QStringList arguments{QStringLiteral("--quiet")};
        if (spec.coverBytes > 0) {
            Write(wave + QStringLiteral(".jpg"), CoverBytes(spec.coverBytes));
            arguments << QStringLiteral("--ti") << wave + QStringLiteral(".jpg");
        }
        Run(QStringLiteral("lame"),
            arguments + TagArguments(spec, &TagOption::lame) + spec.options + QStringList{wave, path});
    } else if (ending == u"ogg") {
        Run(QStringLiteral("oggenc"), QStringList{QStringLiteral("--quiet"), QStringLiteral("--utf8")} +
                                          TagArguments(spec, &TagOption::vorbis) + spec.options +
                                          QStringList{QStringLiteral("-o"), path, wave});
    } else {
        ASSERT_EQ(ending, u"opus") << path.toStdString();
        Run(QStringLiteral("opusenc"), QStringList{QStringLiteral("--quiet")} + TagArguments(spec, &TagOption::opus) +
                                           spec.options + QStringList{wave, path});
    }
}

} // namespace

qint64 SoundSpec::Frames() const {
    return std::llround(seconds * rate);
}

QString MakeSound(const QString& folder, const QString& name, const SoundSpec& spec) {
    const QString path = QDir(folder).absoluteFilePath(name);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    if (name.endsWith(QStringLiteral(".wav"), Qt::CaseInsensitive)) {
        Write(path, WaveBytes(spec));
        return path;
    }
    const QTemporaryDir scratch;
    const QString wave = scratch.filePath(QStringLiteral("sound.wav"));
    Write(wave, WaveBytes(spec));
    Encode(wave, path, spec);
    return path;
}

} // namespace kalvo::test

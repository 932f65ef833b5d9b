#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/XServer.h"
#include "system/Program.h"

#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

/** A session bus of its own: the screen reader's registry starts and ends with it. */
TEST(Assistive, AScreenReaderFindsReadsAndWorksTheDesk) {
    if (!XServer::IsInstalled() || QStandardPaths::findExecutable(u"dbus-run-session"_s).isEmpty())
        GTEST_SKIP() << "Xvfb or dbus is not installed";
    const TestFolder folder;
    const XServer screen;
    const QString data = folder.Path(u"Kalvo"_s);
    SoundSpec sound;
    sound.seconds = 90;
    QStringList titles;
    for (const auto& title : {u"Männersache"_s, u"Zweiter"_s}) {
        sound.title = title;
        titles.append(MakeSound(folder.Path(u"Musik"_s), u"%1.mp3"_s.arg(titles.size()), sound));
    }
    ASSERT_EQ(RunProgram({u"--datenordner"_s, data, u"--einlesen"_s, folder.Path(u"Musik"_s)}).exitCode, 0);

    QProcess reader;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(screen.Display()));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"SDL_AUDIODRIVER"_s, u"dummy"_s);
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder.Path());
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s); // the X libraries keep what they have
    reader.setProcessEnvironment(environment);
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(u"dbus-run-session"_s,
                 QStringList{u"--"_s, u"/usr/bin/python3"_s,
                             qEnvironmentVariable("KALVO_SOURCE") + u"/tests/system/assistive.py"_s,
                             qEnvironmentVariable("KALVO_BIN") + u"/kalvo"_s, u"--datenordner"_s, data, u"--geraet"_s,
                             u"0"_s, u"--ohne-startauswahl"_s} +
                     titles);
    constexpr int patience = 150'000; // ms; it gives up by itself
    EXPECT_TRUE(reader.waitForFinished(patience));
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAll().toStdString();
}

} // namespace
} // namespace kalvo::test

#include "support/SoundMaker.h"
#include "system/DrivenProgram.h"

#include <QStandardPaths>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class Assistive : public DrivenTest {};

/** A session bus of its own: the screen reader's registry starts and ends with it. */
TEST_F(Assistive, AScreenReaderFindsReadsAndWorksTheDesk) {
    if (QStandardPaths::findExecutable(u"dbus-run-session"_s).isEmpty())
        GTEST_SKIP() << "dbus is not installed";
    SoundSpec sound;
    sound.seconds = 90;
    QStringList titles;
    for (const auto& title : {u"Männersache"_s, u"Zweiter"_s}) {
        sound.title = title;
        titles.append(MakeSound(folder_.Path(u"Musik"_s), u"%1.mp3"_s.arg(titles.size()), sound));
    }
    ASSERT_EQ(RunProgram({u"--datenordner"_s, Data(), u"--einlesen"_s, folder_.Path(u"Musik"_s)}).exitCode, 0);

    QProcess reader;
    reader.setProcessEnvironment(EnvironmentOnScreen(screen_->Display(), {{u"XDG_RUNTIME_DIR"_s, folder_.Path()}}));
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(u"dbus-run-session"_s,
                 QStringList{u"--"_s, u"/usr/bin/python3"_s,
                             qEnvironmentVariable("KALVO_SOURCE") + u"/tests/system/assistive.py"_s,
                             qEnvironmentVariable("KALVO_BIN") + u"/kalvo"_s} +
                     Arguments() + titles);
    constexpr int patience = 150'000; // ms; it gives up by itself
    EXPECT_TRUE(reader.waitForFinished(patience));
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAll().toStdString();
}

} // namespace
} // namespace kalvo::test

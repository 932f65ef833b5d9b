// The desk as its desktop meets it: on a bus of the test's own, asked by playerctl, with services that are watched.

#include "app/DesktopLink.h"

#include "app/FakeDesktop.h"
#include "app/FakeWindow.h"
#include "app/StatusLine.h"
#include "archive/ui/WindowActs.h"
#include "support/MessageBus.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QDBusConnectionInterface>
#include <QImage>
#include <QSlider>
#include <QStandardPaths>
#include <QUrl>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::WaitUntil;

const QString mprisName = u"org.mpris.MediaPlayer2.kalvo"_s;
const QString mprisObject = u"/org/mpris/MediaPlayer2"_s;

class DesktopLinkTest : public test::FakeWindow {
protected:
    void SetUp() override {
        if (!test::MessageBus::IsInstalled() || QStandardPaths::findExecutable(u"playerctl"_s).isEmpty())
            GTEST_SKIP() << "dbus-daemon or playerctl is not installed";
        daemon = std::make_unique<test::MessageBus>();
        for (const char* variable : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) {
            before.append(qgetenv(variable));
            qputenv(variable, daemon->Address().toLocal8Bit());
        }
        bus = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(daemon->Address(), u"test"_s));
        ASSERT_TRUE(bus->isConnected());
    }
    void TearDown() override {
        window.reset();
        bus.reset();
        QDBusConnection::disconnectFromBus(u"test"_s);
        if (before.size() == 2) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", before[0]);
            qputenv("DBUS_SYSTEM_BUS_ADDRESS", before[1]);
        }
    }

    /** Puts a service on the bus before the program comes. */
    template<typename Service>
    void Offer(Service& service, const QString& name, const QString& path) {
        ASSERT_TRUE(bus->registerObject(path, &service, QDBusConnection::ExportScriptableContents));
        ASSERT_TRUE(bus->registerService(name));
    }
    void Load() {
        desk->list1.Append({Entry("Eins"), Entry("Drei")});
        desk->list2.Append({Entry("Zwei")});
        ASSERT_TRUE(window->Load());
    }
    void LoadAndWait() {
        Load();
        ASSERT_TRUE(WaitUntil([this] { return IsOnBus(mprisName); }));
    }
    bool IsOnBus(const QString& name) const { return bus->interface()->isServiceRegistered(name); }
    PlaylistEntry Entry(const char* title) const {
        return {
            QLatin1String(title), u"Ein & <Chor>"_s, {}, {}, {}, folder.Write(QLatin1String(title) + u"-60"_s, "x")};
    }
    /** What playerctl says of the desk. */
    QString Ask(const QStringList& arguments) const {
        QProcess program;
        program.start(u"playerctl"_s, QStringList{u"-p"_s, u"kalvo"_s} + arguments);
        EXPECT_TRUE(WaitUntil([&program] { return program.state() == QProcess::NotRunning; }));
        return QString::fromUtf8(program.readAll()).trimmed();
    }
    /** Whether it comes to say so. */
    bool Comes(const QStringList& question, const QString& answer) const {
        return WaitUntil([&] { return Ask(question) == answer; });
    }

    std::unique_ptr<test::MessageBus> daemon;
    std::unique_ptr<QDBusConnection> bus;
    QList<QByteArray> before;
};

TEST_F(DesktopLinkTest, PlayerctlWorksTheTwoPlayersAsOne) {
    LoadAndWait();
    EXPECT_EQ(Ask({u"status"_s}), u"Stopped"_s);
    Ask({u"play"_s});
    EXPECT_TRUE(Comes({u"status"_s}, u"Playing"_s));
    EXPECT_TRUE(Comes({u"metadata"_s, u"--format"_s, u"{{title}}, {{artist}}, {{duration(mpris:length)}}"_s},
                      u"Eins, Ein & <Chor>, 1:00"_s));
    Ask({u"pause"_s});
    EXPECT_TRUE(Comes({u"status"_s}, u"Paused"_s));
    Ask({u"position"_s, u"20"_s});
    EXPECT_TRUE(Comes({u"position"_s}, u"20.000000"_s));
    Ask({u"position"_s, u"5-"_s});
    EXPECT_TRUE(Comes({u"position"_s}, u"15.000000"_s));
    EXPECT_DOUBLE_EQ(desk->mixer.PositionSeconds(1), 15);
    Ask({u"next"_s});
    Ask({u"play-pause"_s});
    EXPECT_TRUE(Comes({u"metadata"_s, u"title"_s}, u"Eins"_s)) << "nothing is skipped while it stands";
    Ask({u"next"_s});
    EXPECT_TRUE(Comes({u"metadata"_s, u"title"_s}, u"Zwei"_s)) << "a hand-over to the other player";
    EXPECT_GT(desk->mixer.Fader(), 0);
    Ask({u"volume"_s, u"0.4"_s});
    EXPECT_TRUE(WaitUntil([this] { return In<QSlider>(*window, "hscroll1").value() == 40; }));
    Ask({u"open"_s, QUrl::fromLocalFile(folder.Write(u"Vier-60.mp3"_s, "x")).toString()});
    EXPECT_TRUE(WaitUntil([this] { return desk->list1.Count() + desk->list2.Count() == 4; }));
    Ask({u"stop"_s});
    EXPECT_TRUE(Comes({u"status"_s}, u"Stopped"_s));
}

TEST_F(DesktopLinkTest, ChangesAndJumpsAreToldWithTheCover) {
    QImage cover(20, 20, QImage::Format_RGB32);
    cover.fill(Qt::red);
    ASSERT_TRUE(cover.save(folder.Path(u"cover.png"_s)));
    test::FakeListener listener;
    bus->connect({}, mprisObject, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, &listener,
                 SLOT(TakeChanges(QString, QVariantMap, QStringList)));
    bus->connect({}, mprisObject, u"org.mpris.MediaPlayer2.Player"_s, u"Seeked"_s, &listener,
                 SLOT(TakeSeeked(qlonglong)));
    LoadAndWait();
    desk->mixer.Play(1, -1);
    EXPECT_TRUE(WaitUntil([&] { return listener.changed[u"PlaybackStatus"_s] == u"Playing"_s; }));
    EXPECT_EQ(listener.changed[u"CanGoNext"_s], true);
    EXPECT_TRUE(WaitUntil([this] { return Ask({u"metadata"_s, u"mpris:artUrl"_s}).startsWith(u"file:///"_s); }));
    const QImage shown(QUrl(Ask({u"metadata"_s, u"mpris:artUrl"_s})).toLocalFile());
    EXPECT_GT(shown.pixelColor(10, 10).red(), 200);
    desk->mixer.Pause(1);
    EXPECT_TRUE(WaitUntil([&] { return listener.changed[u"PlaybackStatus"_s] == u"Paused"_s; }));
    listener.seeked.clear();
    desk->mixer.SeekSeconds(1, 42);
    EXPECT_TRUE(WaitUntil([&] { return listener.seeked.contains(42.0); }));
}

TEST_F(DesktopLinkTest, RaiseAndQuitReachTheWindow) {
    LoadAndWait();
    window->showMinimized();
    const auto call = [this](const char* method) {
        bus->asyncCall(
            QDBusMessage::createMethodCall(mprisName, mprisObject, u"org.mpris.MediaPlayer2"_s, QLatin1String(method)));
    };
    call("Raise");
    EXPECT_TRUE(WaitUntil([this] { return !window->isMinimized(); }));
    test::Answers answers({u"Nein"_s});
    call("Quit");
    EXPECT_TRUE(WaitUntil([&answers] { return answers.AllGiven(); }));
    EXPECT_EQ(answers.Said(), QStringList{u"Achtung!|Wollen Sie Kalvo wirklich beenden?"_s});
    EXPECT_TRUE(window->isVisible());
}

TEST_F(DesktopLinkTest, ASecondProgramHasANameOfItsOwn) {
    ASSERT_TRUE(bus->registerService(mprisName));
    Load();
    const QString name = mprisName + u".instance%1"_s.arg(QCoreApplication::applicationPid());
    EXPECT_TRUE(WaitUntil([&] { return IsOnBus(name); }));
}

TEST_F(DesktopLinkTest, TheScreenSaverIsHeldOffWhileMusicPlays) {
    test::FakeScreenSaver saver;
    Offer(saver, u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s);
    LoadAndWait();
    EXPECT_TRUE(saver.reasons.isEmpty());
    for (int time = 0; time < 2; ++time) {
        desk->mixer.Play(1, -1);
        EXPECT_TRUE(WaitUntil([&] { return saver.reasons == QStringList{u"Kalvo: Es wird Musik gespielt"_s}; }));
        desk->mixer.Pause(1);
        EXPECT_TRUE(WaitUntil([&] { return saver.reasons.isEmpty(); }));
    }
}

TEST_F(DesktopLinkTest, WithoutAScreenSaverTheLoginServiceKeepsTheMachineAwake) {
    test::FakeLogin login;
    Offer(login, u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s);
    LoadAndWait();
    desk->mixer.Play(1, -1);
    EXPECT_TRUE(WaitUntil([&] { return login.asked == u"sleep:idle Kalvo block"_s; }));
    EXPECT_FALSE(login.IsReleased());
    desk->mixer.Stop(1);
    EXPECT_TRUE(WaitUntil([&] { return login.IsReleased(); }));
}

TEST_F(DesktopLinkTest, NotificationsComeOnlyWhenTheUserIsElsewhere) {
    test::FakeNotifications service;
    Offer(service, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s);
    BusLink link(u"notices"_s);
    link.Connect(daemon->Address());
    ASSERT_TRUE(WaitUntil([&] { return link.IsConnected(); }));
    bool away = false;
    bool pressed = false;
    DesktopNotices notices([&away] { return away; });
    QObject::connect(&notices, &DesktopNotices::Pressed, [&pressed] { pressed = true; });
    notices.SetBus(link);
    notices.Warn(u"unseen"_s);
    away = true;
    notices.TellTitle(u"unwanted"_s, {}, {});
    notices.Warn(u"Karte < weg"_s);
    notices.SetWanted(false, true);
    notices.Warn(u"unwanted"_s);
    notices.TellTitle(u"Eins"_s, u"A & B"_s, {});
    ASSERT_TRUE(WaitUntil([&] { return service.shown.size() == 2; }));
    EXPECT_EQ(service.shown, (QStringList{u"1: Kalvo|Karte &lt; weg"_s, u"2: Eins|A &amp; B"_s}));
    ASSERT_TRUE(WaitUntil([&] {
        Q_EMIT service.ActionInvoked(2, u"default"_s);
        return pressed;
    }));
    notices.TellTitle(u"Zwei"_s, {}, {});
    notices.Withdraw();
    ASSERT_TRUE(WaitUntil([&] { return service.shown.size() == 4; }));
    EXPECT_EQ(service.shown.mid(2), (QStringList{u"2: Zwei|"_s, u"1 closed"_s}))
        << "a title takes the last one's place";
}

TEST_F(DesktopLinkTest, TheOptionsSwitchEachOff) {
    folder.Write(u"Kalvo/kalvo.ini"_s, "[Desktop]\nFernbedienung=0\nWarnungen=1\nTitelwechsel=1\nWachbleiben=0\n");
    test::FakeNotifications service;
    Offer(service, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s);
    test::FakeScreenSaver saver;
    Offer(saver, u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s);
    Load();
    desk->mixer.Play(1, -1);
    ASSERT_TRUE(WaitUntil([&] { return !service.shown.isEmpty(); })) << "the last that comes";
    In<StatusLine>(*window, "Statuszeile").Warn(u"Die Platte ist voll"_s);
    ASSERT_TRUE(WaitUntil([&] { return service.shown.size() == 2; }));
    EXPECT_EQ(service.shown, (QStringList{u"1: Eins|Ein &amp; &lt;Chor&gt;"_s, u"2: Kalvo|Die Platte ist voll"_s}));
    EXPECT_TRUE(saver.reasons.isEmpty());
    EXPECT_FALSE(IsOnBus(mprisName));
}

} // namespace
} // namespace kalvo

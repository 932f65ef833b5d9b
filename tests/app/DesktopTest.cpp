#include "app/DesktopLink.h"
#include "app/FakeDesktop.h"
#include "app/FakeWindow.h"
#include "app/MprisValues.h"
#include "app/StatusLine.h"
#include "app/ToolRun.h"
#include "base/Settings.h"
#include "support/MessageBus.h"

#include <QDBusConnectionInterface>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::ToolRun;
using test::WaitUntil;

const QString mprisName = u"org.mpris.MediaPlayer2.kalvo"_s;
const QString mprisObject = u"/org/mpris/MediaPlayer2"_s;

/** The desk as its desktop meets it: on a bus of its own, asked by playerctl, with services that are watched. */
struct DesktopLinkTest : test::FakeWindow {
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
    void Offer(QObject& service, const QString& name) {
        const QString path = u'/' + QString(name).replace(u'.', u'/');
        ASSERT_TRUE(bus->registerObject(path, &service, QDBusConnection::ExportScriptableContents));
        ASSERT_TRUE(bus->registerService(name));
    }
    void Load() {
        desk->list1.Append({Entry("Eins-60", u"Ein & <Chor>"_s), Entry("Drei-60")});
        desk->list2.Append({Entry("Zwei-60")});
        ASSERT_TRUE(window->Load());
    }
    void LoadAndWait() {
        Load();
        ASSERT_TRUE(WaitUntil([this] { return IsOnBus(mprisName); }));
    }
    bool IsOnBus(const QString& name) const { return bus->interface()->isServiceRegistered(name); }
    /** What playerctl says of the desk. */
    QString Ask(const QString& words) const {
        QProcess program;
        program.start(u"playerctl"_s, (u"-p kalvo "_s + words).split(u' '));
        EXPECT_TRUE(WaitUntil([&program] { return program.state() == QProcess::NotRunning; }));
        return QString::fromUtf8(program.readAll()).trimmed();
    }

    std::unique_ptr<test::MessageBus> daemon;
    std::unique_ptr<QDBusConnection> bus;
    QList<QByteArray> before;
};

TEST_F(DesktopLinkTest, PlayerctlWorksTheTwoPlayersAsOne) {
    LoadAndWait();
    EXPECT_EQ(Ask(u"status"_s), u"Stopped"_s);
    const struct {
        QString act;
        QString question;
        QString answer; ///< comes to be given
    } steps[] = {{u"play"_s, u"status"_s, u"Playing"_s},
                 {u"status"_s, u"metadata --format {{title}},{{artist}},{{duration(mpris:length)}}"_s,
                  u"Eins-60,Ein & <Chor>,1:00"_s},
                 {u"pause"_s, u"status"_s, u"Paused"_s},
                 {u"position 20"_s, u"position"_s, u"20.000000"_s},
                 {u"position 5-"_s, u"position"_s, u"15.000000"_s},
                 {u"next"_s, u"status"_s, u"Paused"_s},
                 {u"play-pause"_s, u"metadata title"_s, u"Eins-60"_s}, // nothing was skipped while it stood
                 {u"next"_s, u"metadata title"_s, u"Zwei-60"_s}};      // a hand-over to the other player
    for (const auto& step : steps) {
        Ask(step.act);
        EXPECT_TRUE(WaitUntil([&] { return Ask(step.question) == step.answer; })) << step.act.toStdString();
    }
    EXPECT_GT(desk->mixer.Fader(), 0);
    Ask(u"volume 0.4"_s);
    EXPECT_TRUE(WaitUntil([this] { return In<QSlider>("hscroll1").value() == 40; }));
    Ask(u"open "_s + QUrl::fromLocalFile(folder.Write(u"Vier-60.mp3"_s, "x")).toString());
    EXPECT_TRUE(WaitUntil([this] { return desk->list1.Count() + desk->list2.Count() == 4; }));
    Ask(u"stop"_s);
    EXPECT_TRUE(WaitUntil([this] { return Ask(u"status"_s) == u"Stopped"; }));
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
    EXPECT_TRUE(WaitUntil([this] { return Ask(u"metadata mpris:artUrl"_s).startsWith(u"file:///"_s); }));
    const QImage shown(QUrl(Ask(u"metadata mpris:artUrl"_s)).toLocalFile());
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
    const auto call = [this](const QString& method) {
        bus->asyncCall(QDBusMessage::createMethodCall(mprisName, mprisObject, u"org.mpris.MediaPlayer2"_s, method));
    };
    call(u"Raise"_s);
    EXPECT_TRUE(WaitUntil([this] { return !window->isMinimized(); }));
    test::Answers answers({u"Nein"_s});
    call(u"Quit"_s);
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
    Offer(saver, u"org.freedesktop.ScreenSaver"_s);
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
    Offer(login, u"org.freedesktop.login1"_s);
    LoadAndWait();
    desk->mixer.Play(1, -1);
    EXPECT_TRUE(WaitUntil([&] { return login.asked == u"sleep:idle Kalvo block"_s; }));
    EXPECT_FALSE(login.IsReleased());
    desk->mixer.Stop(1);
    EXPECT_TRUE(WaitUntil([&] { return login.IsReleased(); }));
}

TEST_F(DesktopLinkTest, NotificationsComeOnlyWhenTheUserIsElsewhere) {
    test::FakeNotifications service;
    Offer(service, u"org.freedesktop.Notifications"_s);
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
}

TEST_F(DesktopLinkTest, TheOptionsSwitchEachOff) {
    folder.Write(u"Kalvo/kalvo.ini"_s, "[Desktop]\nFernbedienung=0\nWarnungen=1\nTitelwechsel=1\nWachbleiben=0\n");
    test::FakeNotifications service;
    Offer(service, u"org.freedesktop.Notifications"_s);
    test::FakeScreenSaver saver;
    Offer(saver, u"org.freedesktop.ScreenSaver"_s);
    Load();
    desk->mixer.Play(1, -1);
    ASSERT_TRUE(WaitUntil([&] { return !service.shown.isEmpty(); })) << "the last that comes";
    In<StatusLine>("Statuszeile").Warn(u"Die Platte ist voll"_s);
    ASSERT_TRUE(WaitUntil([&] { return service.shown.size() == 2; }));
    EXPECT_EQ(service.shown, (QStringList{u"1: Eins-60|Ein &amp; &lt;Chor&gt;"_s, u"2: Kalvo|Die Platte ist voll"_s}));
    EXPECT_TRUE(saver.reasons.isEmpty());
    EXPECT_FALSE(IsOnBus(mprisName));
}

/** What desktops read of the program, checked by the tools that they come with. */
QString DesktopFile(const QString& name) {
    return qEnvironmentVariable("KALVO_SOURCE") + u"/packaging/desktop/"_s + name;
}

bool Have(const char* program) {
    return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
}

TEST(DesktopFilesTest, TheDesktopFileIsValidAndOffersWhatPlayersOffer) {
    if (!Have("desktop-file-validate"))
        GTEST_SKIP() << "desktop-file-utils is not installed";
    const ToolRun outcome(u"desktop-file-validate"_s, {DesktopFile(u"kalvo.desktop"_s)});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.said, QByteArray());
    const Settings file(DesktopFile(u"kalvo.desktop"_s));
    EXPECT_EQ(file.GetSetting(u"Desktop Entry"_s, u"MimeType"_s, {}), mpris::MimeTypes().join(u';') + u';');
}

TEST(DesktopFilesTest, TheMetadataAreValidAndOfThisVersion) {
    if (!Have("appstreamcli"))
        GTEST_SKIP() << "appstream is not installed";
    const QString file = qEnvironmentVariable("KALVO_BIN") + u"/../packaging/example.kalvo.kalvo.metainfo.xml"_s;
    const ToolRun outcome(u"appstreamcli"_s, {u"validate"_s, u"--no-net"_s, file});
    EXPECT_EQ(outcome.code, 0) << outcome.said.constData();
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().contains("<release version=\"" KALVO_VERSION "\""));
}

TEST(DesktopFilesTest, EveryPlaylistFileIsKnownByItsType) {
    if (!Have("update-mime-database") || !Have("gio"))
        GTEST_SKIP() << "shared-mime-info or gio is not installed";
    const test::TestFolder folder;
    QDir().mkpath(folder.Path(u"mime/packages"_s));
    ASSERT_TRUE(QFile::copy(DesktopFile(u"kalvo-mime.xml"_s), folder.Path(u"mime/packages/kalvo.xml"_s)));
    const ToolRun update(u"update-mime-database"_s, {folder.Path(u"mime"_s)});
    ASSERT_EQ(update.code, 0) << update.said.constData();
    const char* const cases[][3] = {{"Abend.wil", "SQLite format 3", "application/x-kalvo-wiedergabeliste"},
                                    {"Abend.m3u", "#EXTM3U\n", "audio/x-mpegurl"},
                                    {"Abend.pls", "[playlist]\n", "audio/x-scpls"}};
    for (const auto& [name, content, type] : cases) {
        const QString path = folder.Write(QLatin1String(name), QByteArray(content) + '\0');
        const ToolRun told(u"gio"_s, {u"info"_s, u"-a"_s, u"standard::content-type"_s, path}, folder.Path());
        EXPECT_TRUE(told.said.contains(type)) << name << '\n' << told.said.constData();
        EXPECT_TRUE(mpris::MimeTypes().contains(QLatin1String(type)));
    }
}

} // namespace
} // namespace kalvo

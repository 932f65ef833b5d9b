#include "app/ComponentFetch.h"
#include "app/ComponentSignature.h"
#include "app/FakeWindow.h"
#include "app/MisbehavingServer.h"
#include "app/ToolRun.h"
#include "app/frmDownload.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using test::Answer;
using test::WaitUntil;

const QString kDisc = u"CdBase.ocx"_s;
const QString kWenzo = u"wenzo.dll"_s;
const QString kEncoder = u"BASSenc.dll"_s;
const QByteArray kContent = QByteArray("\177ELF neu\0mit Null", 17).repeated(5000);

struct ComponentFetchTest : ::testing::Test {
    ComponentFetchTest() {
        source_.address = server_.Address(u"/download"_s);
        source_.publicKey = keys_.publicKey;
        source_.programFolder = folder_.Path();
        folder_.Write(kDisc, "alt");
        EXPECT_TRUE(QFile::copy(QDir(qEnvironmentVariable("KALVO_BIN")).filePath(kEncoder), folder_.Path(kEncoder)));
    }

    void Offer(const QString& name, const QByteArray& content = kContent) {
        server_.answers[Path(name)] = Answer::File(content);
        server_.answers[Path(name) + u".sig"_s] =
            Answer::File(ComponentSignature::Sign(name, content, keys_.secretKey));
    }
    static QString Path(const QString& name) { return u"/download/"_s + name; }

    struct Outcome {
        bool installed = false;
        std::string message;
        QList<int> progress;
    };
    Outcome Fetch(const QString& component) {
        ComponentFetch fetch(source_);
        Outcome outcome;
        int told = 0;
        QObject::connect(&fetch, &ComponentFetch::Progress, &fetch,
                         [&](const QString&, int percent) { outcome.progress.append(percent); });
        QObject::connect(&fetch, &ComponentFetch::Finished, &fetch, [&](bool installed, const QString& message) {
            outcome.installed = installed;
            outcome.message = message.toStdString();
            EXPECT_EQ(++told, 1);
        });
        fetch.Start(component);
        EXPECT_TRUE(WaitUntil([&] { return told > 0; }, std::chrono::seconds(60)));
        return outcome;
    }
    void ExpectRefusal(const QString& component, const char* message) {
        const Outcome outcome = Fetch(component);
        EXPECT_FALSE(outcome.installed);
        EXPECT_NE(outcome.message.find(message), std::string::npos) << outcome.message;
    }
    QStringList Files() const { return QDir(folder_.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    const ComponentSignature::KeyPair keys_ = ComponentSignature::NewKeys();
    test::TestFolder folder_;
    test::MisbehavingServer server_;
    ComponentSource source_;
};

TEST_F(ComponentFetchTest, ASignedComponentIsPutInItsPlace) {
    Offer(kDisc);
    server_.answers[u"/dort"_s] = server_.answers[Path(kDisc)];
    server_.answers[Path(kDisc)] = Answer::Redirect(u"/dort"_s); // followed, being on this machine
    Offer(kWenzo, "klein");
    const Outcome disc = Fetch(u"CDDB"_s);
    EXPECT_TRUE(disc.installed) << disc.message;
    EXPECT_EQ(folder_.Read(kDisc), kContent);
    EXPECT_EQ(std::pair(disc.progress.value(0, -1), disc.progress.value(disc.progress.size() - 1)), std::pair(0, 100));
    EXPECT_TRUE(std::is_sorted(disc.progress.begin(), disc.progress.end()));

    EXPECT_TRUE(Fetch(u"wenzo"_s).installed);
    EXPECT_EQ(folder_.Read(u"Temp/wenzo.dll"_s), "klein") << "waits for the next start";
    EXPECT_FALSE(server_.asked.contains(Path(kEncoder)));
    EXPECT_EQ(Files(), (QStringList{kEncoder, kDisc, u"Temp"_s})) << "nothing is left behind";
}

TEST_F(ComponentFetchTest, AnEncoderThatCannotBeUsedComesWithTheLibrary) {
    folder_.Write(kEncoder, "kaputt");
    Offer(kWenzo);
    EXPECT_FALSE(Fetch(u"wenzo"_s).installed) << "the encoder is not offered";
    EXPECT_EQ(folder_.Read(kEncoder), "kaputt");
    EXPECT_FALSE(QFile::exists(folder_.Path(u"Temp"_s))) << "all or nothing";
    Offer(kEncoder, "kodierer");
    EXPECT_TRUE(Fetch(u"wenzo"_s).installed);
    EXPECT_EQ(folder_.Read(kEncoder), "kodierer");
    EXPECT_EQ(folder_.Read(u"Temp/wenzo.dll"_s), kContent);
}

TEST_F(ComponentFetchTest, NothingIsInstalledUnlessEverythingIsRight) {
    const auto sign = [](const QString& name, const QByteArray& key) {
        return Answer::File(ComponentSignature::Sign(name, kContent, key));
    };
    const QByteArray open = "HTTP/1.1 200 OK\r\n\r\n";
    const QByteArray half = Answer::File(kContent).bytes.chopped(kContent.size() / 2);
    const struct {
        const char* name;
        const char* message; // part of what is told
        const char* suffix;  // of the file that is answered so
        Answer answer;
    } cases[] = {
        {"no such file", "Fehler 404", "", Answer::Status("404 Not Found")},
        {"unsigned", "nicht signiert", ".sig", Answer::Status("404 Not Found")},
        {"signature refused", "Fehler 403", ".sig", Answer::Status("403 No")},
        {"another's key", "Signatur", ".sig", sign(kDisc, ComponentSignature::NewKeys().secretKey)},
        {"another component's signature", "Signatur", ".sig", sign(kWenzo, keys_.secretKey)},
        {"signature is no such thing", "Signatur", ".sig", Answer::File("<html>")},
        {"signature without end", "zu groß", ".sig", {open, Answer::Then::Flood}},
        {"changed on the way", "Signatur", "", Answer::File(QByteArray(kContent).replace(900, 1, "X"))},
        {"cut short", "abgerissen", "", {half}},
        {"empty", "abgerissen", "", Answer::File({})},
        {"no web server", "", "", {"SSH-2.0\r\n\r\n"}},
        {"hangs up", "abgerissen", "", {}},
        {"too large, as told", "zu groß", "", {"HTTP/1.1 200 OK\r\nContent-Length: 99999999\r\n\r\nx"}},
        {"too large, not told", "zu groß", "", {open, Answer::Then::Flood}},
        {"refers to plain HTTP", "nicht gesichert", "", Answer::Redirect(u"http://example.invalid/CdBase.ocx"_s)},
        {"refers in a circle", "im Kreis", "", Answer::Redirect(server_.Address(Path(kDisc)).toString())}};
    source_.mostBytes = 1 << 20;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Offer(kDisc);
        server_.answers[Path(kDisc) + QLatin1String(c.suffix)] = c.answer;
        ExpectRefusal(u"CDDB"_s, c.message);
        EXPECT_EQ(folder_.Read(kDisc), "alt");
        EXPECT_EQ(Files(), (QStringList{kEncoder, kDisc}));
    }
}

TEST_F(ComponentFetchTest, AServerThatHangsOrDripsIsGivenUp) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 85000\r\n\r\n";
    const Answer answers[] = {{{}, Answer::Then::Hang}, {head + "ab", Answer::Then::Hang}, {head, Answer::Then::Drip}};
    for (const Answer& answer : answers) {
        Offer(kDisc);
        server_.answers[Path(kDisc)] = answer;
        const bool drips = answer.then == Answer::Then::Drip;
        source_.limits.silence = std::chrono::milliseconds(drips ? 60000 : 200);
        source_.limits.whole = std::chrono::milliseconds(drips ? 300 : 60000);
        ExpectRefusal(u"CDDB"_s, "Der Server antwortet nicht.");
        EXPECT_EQ(folder_.Read(kDisc), "alt");
    }
}

TEST_F(ComponentFetchTest, WithoutAnAddressOrAKeyNothingIsTried) {
    const struct {
        QUrl address;
        QByteArray key;
        const char* component;
        const char* message;
    } cases[] = {{{}, keys_.publicKey, "CDDB", "ohne Adresse"},
                 {source_.address, {}, "CDDB", "ohne Adresse"},
                 {source_.address, "abc", "CDDB", "Schlüssel ist ungültig"},
                 {source_.address, keys_.publicKey, "../bass", "unbekannt"},
                 {QUrl(u"http://example.org/x"_s), keys_.publicKey, "CDDB", "nicht gesichert"},
                 {QUrl(u"ftp://127.0.0.1/x"_s), keys_.publicKey, "CDDB", "nicht gesichert"},
                 {QUrl(u"http://127.0.0.1:1/x"_s), keys_.publicKey, "CDDB", "nicht erreichbar"}};
    Offer(kDisc);
    for (const auto& c : cases) {
        source_.address = c.address;
        source_.publicKey = c.key;
        ExpectRefusal(QString::fromLatin1(c.component), c.message);
    }
    EXPECT_TRUE(server_.asked.isEmpty());
}

TEST_F(ComponentFetchTest, WhatCannotBeWrittenIsToldAndNothingElseIsInstalled) {
    Offer(kWenzo);
    Offer(kEncoder);
    ASSERT_TRUE(QFile::remove(folder_.Path(kEncoder)));
    for (const char* inTheWay : {"Temp", "Temp/wenzo.dll/datei", "BASSenc.dll/datei"}) {
        const QString blocked = folder_.Write(QLatin1String(inTheWay), "eine Datei");
        SCOPED_TRACE(inTheWay);
        ExpectRefusal(u"wenzo"_s, "kann nicht geschrieben werden");
        EXPECT_FALSE(QFileInfo(folder_.Path(kEncoder)).isFile());
        EXPECT_FALSE(QFileInfo(folder_.Path(u"Temp/wenzo.dll"_s)).isFile());
        EXPECT_EQ(QDir(folder_.Path()).entryList({u"*.neu"_s}), QStringList());
        ASSERT_TRUE(QFile::remove(blocked));
        QDir(folder_.Path()).rmpath(QFileInfo(QLatin1String(inTheWay)).path());
    }
    EXPECT_TRUE(Fetch(u"wenzo"_s).installed);
}

TEST_F(ComponentFetchTest, ItsWindowShowsHowFarItIsIsCancelledByEscAndTriedAgain) {
    Offer(kDisc);
    const QByteArray half = Answer::File(kContent).bytes.chopped(kContent.size() / 2);
    server_.answers[Path(kDisc)] = {half, Answer::Then::Hang};
    frmDownload dialog(source_, u"CDDB"_s);
    dialog.show();
    const auto text = [&](const char* label) { return test::FakeWindow::In<QLabel>(dialog, label).text(); };
    auto& again = test::FakeWindow::In<QPushButton>(dialog, "Command1");
    EXPECT_TRUE(WaitUntil([&text] { return text("Label2") == u"50%"_s; }));
    EXPECT_FALSE(again.isVisible());
    test::PressKey(dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible()) << "it says first what became of it";
    EXPECT_EQ(text("Label1"), u"Der Download wurde abgebrochen.\nEs wurde nichts installiert."_s);
    EXPECT_FALSE(dialog.Installed());
    server_.answers[Path(kDisc)] = Answer::File(kContent);
    again.click();
    EXPECT_FALSE(again.isVisible());
    ASSERT_TRUE(WaitUntil([&dialog] { return dialog.Installed(); }));
    EXPECT_EQ(folder_.Read(kDisc), kContent);
    test::PressKey(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

test::ToolRun Sign(const QStringList& arguments) {
    return test::ToolRun(qEnvironmentVariable("KALVO_BIN") + u"/kalvo-signieren"_s, arguments);
}

TEST(SigningTool, SignsWhatTheProgramAcceptsAndNeverOverwritesASecretKey) {
    const test::TestFolder folder;
    const QString secret = folder.Path(u"geheim"_s);
    const QByteArray key = Sign({u"schluessel"_s, secret}).said;
    EXPECT_TRUE(ComponentSignature::IsPublicKey(key));
    EXPECT_EQ(QFileInfo(secret).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
    const QByteArray kept = folder.Read(u"geheim"_s);
    EXPECT_EQ(Sign({u"schluessel"_s, secret}).code, 1);
    EXPECT_EQ(folder.Read(u"geheim"_s), kept);

    const QString file = folder.Write(u"ordner/CdBase.ocx"_s, "Inhalt");
    ASSERT_EQ(Sign({u"signieren"_s, secret, file}).code, 0);
    const QByteArray signature = folder.Read(u"ordner/CdBase.ocx.sig"_s);
    EXPECT_TRUE(ComponentSignature::Verify(u"CdBase.ocx"_s, "Inhalt", signature, key));
    EXPECT_FALSE(ComponentSignature::Verify(u"CdBase.ocx"_s, "inhalt", signature, key));
    EXPECT_FALSE(ComponentSignature::Verify(u"wenzo.dll"_s, "Inhalt", signature, key));
    const QStringList check{u"pruefen"_s, QString::fromLatin1(key.trimmed()), file};
    EXPECT_EQ(Sign(check).code, 0);
    folder.Write(u"ordner/CdBase.ocx"_s, "geändert");
    EXPECT_EQ(Sign(check).code, 1);

    folder.Write(u"kein Schlüssel"_s, "x");
    for (const QString& none : {u"kein Schlüssel"_s, u"fehlt"_s})
        EXPECT_EQ(Sign({u"signieren"_s, folder.Path(none), folder.Write(u"a.dll"_s, "Inhalt")}).code, 1)
            << none.toStdString();
    EXPECT_FALSE(QFile::exists(folder.Path(u"a.dll.sig"_s)));
    EXPECT_EQ(Sign({u"pruefen"_s, u"ff"_s, file}).code, 1);
    EXPECT_EQ(Sign({}).code, 2);
}

} // namespace
} // namespace kalvo

#include "app/ComponentFetch.h"

#include "MisbehavingServer.h"
#include "app/ComponentSignature.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using test::Answer;
using test::WaitUntil;

const QString kDisc = u"CdBase.ocx"_s;
const QString kWenzo = u"wenzo.dll"_s;
const QString kEncoder = u"BASSenc.dll"_s;
const QByteArray kContent = QByteArray("\x7f"
                                       "ELF neu\0mit Null",
                                       17)
                                .repeated(5000);

class ComponentFetchTest : public ::testing::Test {
protected:
    ComponentFetchTest() {
        source_.address = server_.Address(u"/download"_s);
        source_.publicKey = keys_.publicKey;
        source_.programFolder = folder_.Path();
        folder_.Write(kDisc, "alt");
        EXPECT_TRUE(QFile::copy(QDir(qEnvironmentVariable("KALVO_BIN")).filePath(kEncoder), folder_.Path(kEncoder)));
    }

    void Offer(const QString& name, const QByteArray& content = kContent) {
        server_.answers[Path(name)] = Answer::File(content);
        OfferSignature(name, ComponentSignature::Sign(name, content, keys_.secretKey));
    }
    void OfferSignature(const QString& name, const QByteArray& signature) {
        server_.answers[Path(name) + u".sig"_s] = Answer::File(signature);
    }
    static QString Path(const QString& name) { return u"/download/"_s + name; }

    struct Outcome {
        bool installed = false;
        std::string message;
        QList<int> progress;
    };
    Outcome Fetch(const QString& component) {
        ComponentFetch fetch(source_);
        std::optional<Outcome> outcome;
        QList<int> progress;
        QObject::connect(&fetch, &ComponentFetch::Progress, &fetch,
                         [&](const QString&, int percent) { progress.append(percent); });
        QObject::connect(&fetch, &ComponentFetch::Finished, &fetch, [&](bool installed, const QString& message) {
            EXPECT_FALSE(outcome) << "told twice";
            outcome = Outcome{installed, message.toStdString(), progress};
        });
        fetch.Start(component);
        EXPECT_TRUE(WaitUntil([&] { return outcome.has_value(); }, std::chrono::seconds(60)));
        return outcome.value_or(Outcome());
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
    ASSERT_FALSE(disc.progress.isEmpty());
    EXPECT_EQ(disc.progress.first(), 0);
    EXPECT_EQ(disc.progress.last(), 100);
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
    struct Case {
        const char* name;
        const char* message; // part of what is told
        const char* suffix;  // of the file that is answered so
        Answer answer;
    };
    const auto sign = [](const QString& name, const QByteArray& key) {
        return Answer::File(ComponentSignature::Sign(name, kContent, key));
    };
    const QByteArray open = "HTTP/1.1 200 OK\r\n\r\n";
    const QByteArray half = Answer::File(kContent).bytes.chopped(kContent.size() / 2);
    const Case cases[] = {
        {"no such file", "Fehler 404", "", Answer::Status("404 Not Found")},
        {"server error", "Fehler 500", "", Answer::Status("500 Oops")},
        {"unsigned", "nicht signiert", ".sig", Answer::Status("404 Not Found")},
        {"signature refused", "Fehler 403", ".sig", Answer::Status("403 No")},
        {"another's key", "Signatur", ".sig", sign(kDisc, ComponentSignature::NewKeys().secretKey)},
        {"another component's signature", "Signatur", ".sig", sign(kWenzo, keys_.secretKey)},
        {"signature is no such thing", "Signatur", ".sig", Answer::File("<html>")},
        {"signature without end", "zu groß", ".sig", {open, Answer::Then::Flood}},
        {"changed on the way", "Signatur", "", Answer::File(QByteArray(kContent).replace(900, 1, "X"))},
        {"cut short", "abgerissen", "", {half}},
        {"cut short without a length", "Signatur", "", {open + kContent.left(9)}},
        {"empty", "abgerissen", "", Answer::File({})},
        {"no web server", "", "", {"SSH-2.0\r\n\r\n"}},
        {"hangs up", "abgerissen", "", {}},
        {"too large, as told", "zu groß", "", {"HTTP/1.1 200 OK\r\nContent-Length: 99999999\r\n\r\nx"}},
        {"too large, not told", "zu groß", "", {open, Answer::Then::Flood}},
        {"refers to plain HTTP", "nicht gesichert", "", Answer::Redirect(u"http://example.invalid/CdBase.ocx"_s)},
        {"refers to a file here", "nicht gesichert", "", Answer::Redirect(u"file:///etc/hostname"_s)},
        {"refers in a circle", "im Kreis", "", Answer::Redirect(server_.Address(Path(kDisc)).toString())}};
    source_.mostBytes = 1 << 20;
    for (const Case& c : cases) {
        Offer(kDisc);
        server_.answers[Path(kDisc) + QLatin1String(c.suffix)] = c.answer;
        const Outcome outcome = Fetch(u"CDDB"_s);
        EXPECT_FALSE(outcome.installed) << c.name;
        EXPECT_NE(outcome.message.find(c.message), std::string::npos) << c.name << ": " << outcome.message;
        EXPECT_EQ(folder_.Read(kDisc), "alt") << c.name;
        EXPECT_EQ(Files(), (QStringList{kEncoder, kDisc})) << c.name;
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
        const Outcome outcome = Fetch(u"CDDB"_s);
        EXPECT_FALSE(outcome.installed);
        EXPECT_EQ(outcome.message, "Der Server antwortet nicht.");
        EXPECT_EQ(folder_.Read(kDisc), "alt");
    }
}

TEST_F(ComponentFetchTest, WithoutAnAddressOrAKeyNothingIsTried) {
    struct Case {
        QUrl address;
        QByteArray key;
        const char* component;
        const char* message;
    };
    const Case cases[] = {{{}, keys_.publicKey, "CDDB", "ohne Adresse"},
                          {source_.address, {}, "CDDB", "ohne Adresse"},
                          {source_.address, "abc", "CDDB", "Schlüssel ist ungültig"},
                          {source_.address, keys_.publicKey, "../bass", "unbekannt"},
                          {QUrl(u"http://example.org/x"_s), keys_.publicKey, "CDDB", "nicht gesichert"},
                          {QUrl(u"ftp://127.0.0.1/x"_s), keys_.publicKey, "CDDB", "nicht gesichert"},
                          {QUrl(u"http://127.0.0.1:1/x"_s), keys_.publicKey, "CDDB", "nicht erreichbar"}};
    Offer(kDisc);
    for (const Case& c : cases) {
        source_.address = c.address;
        source_.publicKey = c.key;
        const Outcome outcome = Fetch(QString::fromLatin1(c.component));
        EXPECT_FALSE(outcome.installed);
        EXPECT_NE(outcome.message.find(c.message), std::string::npos) << outcome.message;
    }
    EXPECT_TRUE(server_.asked.isEmpty());
}

TEST_F(ComponentFetchTest, WhatCannotBeWrittenIsToldAndNothingElseIsInstalled) {
    Offer(kWenzo);
    Offer(kEncoder);
    ASSERT_TRUE(QFile::remove(folder_.Path(kEncoder)));
    for (const char* inTheWay : {"Temp", "Temp/wenzo.dll/datei", "BASSenc.dll/datei"}) {
        const QString blocked = folder_.Write(QLatin1String(inTheWay), "eine Datei");
        const Outcome outcome = Fetch(u"wenzo"_s);
        EXPECT_FALSE(outcome.installed);
        EXPECT_NE(outcome.message.find("kann nicht geschrieben werden"), std::string::npos) << outcome.message;
        EXPECT_FALSE(QFileInfo(folder_.Path(kEncoder)).isFile()) << inTheWay;
        EXPECT_FALSE(QFileInfo(folder_.Path(u"Temp/wenzo.dll"_s)).isFile()) << inTheWay;
        EXPECT_EQ(QDir(folder_.Path()).entryList({u"*.neu"_s}), QStringList()) << inTheWay;
        ASSERT_TRUE(QFile::remove(blocked));
        QDir(folder_.Path()).rmpath(QFileInfo(QLatin1String(inTheWay)).path());
    }
    EXPECT_TRUE(Fetch(u"wenzo"_s).installed);
}

} // namespace
} // namespace kalvo

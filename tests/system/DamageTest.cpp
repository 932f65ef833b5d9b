// Starts on data folders that are empty, damaged, protected or full, acted out on the real program.

#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "support/XServer.h"
#include "system/DrivenProgram.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace kalvo::test {
namespace {

const QByteArray kZeros(4096, '\0');

class DamageTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!XServer::IsInstalled())
            GTEST_SKIP() << "Xvfb is not installed";
        screen_ = std::make_unique<XServer>();
    }

    static QStringList Arguments(const QString& data) {
        return {QStringLiteral("--datenordner"), data, QStringLiteral("--geraet"), QStringLiteral("0"),
                QStringLiteral("--ohne-startauswahl")};
    }

    static void Chmod(const char* mode, const QString& folder) {
        EXPECT_EQ(QProcess::execute(QStringLiteral("chmod"), {QStringLiteral("-R"), QLatin1String(mode), folder}), 0);
    }

    /** Closes the program as its user does; the texts of what it tells on the way. */
    static QStringList CloseOrderly(DrivenProgram& program) {
        program.Close("Form1");
        QString last = program.WaitFor("xMessageBox").Label("lblText");
        program.Press("xMessageBox", QStringLiteral("Ja"));
        QStringList told;
        WaitUntil([&] {
            const QString text = program.See("xMessageBox").Label("lblText");
            if (!text.isEmpty() && text != last) {
                told.append(text);
                program.Press("xMessageBox", QStringLiteral("ok"));
                last = text;
            }
            return !program.IsRunning();
        });
        EXPECT_EQ(program.WaitForExit(), 0);
        return told;
    }

    TestFolder folder_;
    std::unique_ptr<XServer> screen_;
};

TEST_F(DamageTest, AFirstStartInAnEmptyHomeLaysEverythingOut) {
    DrivenOptions options;
    options.environment = {{QStringLiteral("HOME"), folder_.Path()},
                           {QStringLiteral("XDG_DOCUMENTS_DIR"), QString()},
                           {QStringLiteral("XDG_CONFIG_HOME"), folder_.Path(QStringLiteral(".config"))}};
    DrivenProgram program(screen_->Display(), {QStringLiteral("--geraet"), QStringLiteral("0")}, options);
    const SeenWindow choice = program.WaitFor("frmStart");
    const QString documents = choice.Label("Label19");
    EXPECT_TRUE(documents.startsWith(folder_.Path())) << documents.toStdString();
    program.Press("frmStart", QStringLiteral("Starten"));
    const auto isEmpty = [](const QString& text) { return text.contains(QStringLiteral("0 Titel gefunden")); };
    program.WaitForText("Form1", "lblMeldung", isEmpty);
    const SeenWindow window = program.WaitFor("Form1");
    EXPECT_EQ(window.Label("lblModus"), QStringLiteral("Überblendmodus: Fade-CrossOver"));
    EXPECT_EQ(window.Label("lblKontinuierlich"), QStringLiteral("Kontinuierliche Wiedergabe"));
    EXPECT_EQ(window.Label("lblAutomatik"), QStringLiteral("Mixerautomatik Aktiv"));
    const QDir data(documents + QStringLiteral("/Kalvo"));
    for (const char* name : {"Musikarchiv/default.mav", "Wiedergabeliste/default.mav", "Temp", "CdArchiv", "Musik",
                             "Hintergruende", "Sample", "mp3tabelle.dll", "meta.dat"})
        EXPECT_TRUE(WaitUntil([&] { return data.exists(QLatin1String(name)); })) << name;
    EXPECT_TRUE(CloseOrderly(program).isEmpty());
    EXPECT_TRUE(data.exists(QStringLiteral("kalvo.ini")) && data.exists(QStringLiteral("kalvo.dll")));
}

TEST_F(DamageTest, ADamagedFileOfEachKindIsSetAsideAndToldOnce) {
    struct Case {
        const char* file;
        QByteArray content;
    };
    const Case cases[] = {{"kalvo.ini", kZeros},
                          {"kalvo.dll", "kein,Wert,davon"},
                          {"mp3tabelle.dll", kZeros},
                          {"optionen.dll", kZeros},
                          {"sitzung.json", "{\"format\":1,\"pla"},
                          {"Musikarchiv/default.mav", "kein Archiv" + kZeros},
                          {"Wiedergabeliste/default.mav", "keine Liste" + kZeros}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const TestFolder place;
        place.Write(QLatin1String(c.file), c.content);
        const QString name = QString::fromLatin1(c.file).section(u'/', -1);
        QString kept;
        {
            DrivenProgram program(screen_->Display(), Arguments(place.Path()));
            const QString told = program.WaitForText("Form1", "lblMeldung", [](const QString& text) {
                return text.contains(QStringLiteral("Titel gefunden")) && text.contains(QStringLiteral(".defekt-"));
            });
            EXPECT_EQ(told.count(QStringLiteral(".defekt-")), 1) << told.toStdString();
            const QDir folder = QFileInfo(place.Path(QLatin1String(c.file))).dir();
            const QStringList aside = folder.entryList({name + QStringLiteral(".defekt-*")});
            ASSERT_EQ(aside.size(), 1);
            kept = folder.filePath(aside.front());
            CloseOrderly(program);
        }
        QFile old(kept);
        ASSERT_TRUE(old.open(QIODevice::ReadOnly));
        EXPECT_EQ(old.readAll(), c.content);
        DrivenProgram next(screen_->Display(), Arguments(place.Path()));
        const QString told = next.WaitForText(
            "Form1", "lblMeldung", [](const QString& text) { return text.contains(QStringLiteral("Titel gefunden")); });
        EXPECT_FALSE(told.contains(QStringLiteral("defekt"))) << told.toStdString();
    }
}

TEST_F(DamageTest, AReadOnlyDataFolderIsUsedAsItStands) {
    const QString data = folder_.Path(QStringLiteral("Kalvo"));
    {
        DrivenProgram program(screen_->Display(), Arguments(data));
        program.WaitForText("Form1", "lblMeldung",
                            [](const QString& text) { return text.contains(QStringLiteral("Titel gefunden")); });
        CloseOrderly(program);
    }
    Chmod("a-w,a+rX", folder_.Path());
    const ProgramFolder place; // the other user may not reach the build
    const QByteArray settings = folder_.Read(QStringLiteral("Kalvo/kalvo.ini"));
    DrivenOptions options;
    options.programFolder = place.Path();
    if (::getuid() == 0) // nothing is protected from this user
        options.inChild = [] {
            if (::setgid(65534) != 0 || ::setuid(65534) != 0)
                ::_exit(99);
        };
    DrivenProgram program(screen_->Display(), Arguments(data), options);
    const QString told = program.WaitForText("Form1", "lblMeldung", [](const QString& text) {
        return text.contains(QStringLiteral("Titel gefunden")) && text.contains(QStringLiteral("gelesen"));
    });
    EXPECT_TRUE(told.contains(QStringLiteral("Das Musikarchiv ist schreibgeschützt. Es kann nur gelesen werden.")))
        << told.toStdString();
    CloseOrderly(program);
    EXPECT_EQ(folder_.Read(QStringLiteral("Kalvo/kalvo.ini")), settings);
    Chmod("u+w", folder_.Path());
}

TEST_F(DamageTest, AFolderThatCannotBeMadeIsTold) {
    folder_.Write(QStringLiteral("datei"), "no folder");
    DrivenProgram program(screen_->Display(), Arguments(folder_.Path(QStringLiteral("datei/Kalvo"))));
    program.WaitForText("Form1", "lblMeldung", [](const QString& text) {
        return text.contains(QStringLiteral("Der Datenordner kann nicht angelegt werden: ")) &&
               text.contains(QStringLiteral("Das Musikarchiv kann nicht angelegt werden: "));
    });
    CloseOrderly(program);
}

/** A disk of its own with no room left; where nothing may be mounted, the program may not write a byte. */
class FullDisk {
public:
    explicit FullDisk(const QString& path) : path_(path) {
        QDir().mkpath(path);
        mounted_ = ::mount("none", Native().c_str(), "tmpfs", 0, "size=16k") == 0;
        if (!mounted_)
            return;
        QFile filler(path + QStringLiteral("/voll"));
        EXPECT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(kZeros) == kZeros.size()) {
        }
    }
    ~FullDisk() {
        if (mounted_)
            ::umount2(Native().c_str(), MNT_DETACH);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    DrivenOptions Options() const {
        DrivenOptions options;
        if (!mounted_)
            options.inChild = [] {
                const rlimit nothing{0, 0};
                std::signal(SIGXFSZ, SIG_IGN);
                if (::setrlimit(RLIMIT_FSIZE, &nothing) != 0)
                    ::_exit(99);
            };
        return options;
    }

private:
    std::string Native() const { return QFile::encodeName(path_).toStdString(); }

    QString path_;
    bool mounted_ = false;
};

TEST_F(DamageTest, AFullDiskIsToldAndTheDeskWorks) {
    const FullDisk disk(folder_.Path(QStringLiteral("voll")));
    const QString title = folder_.Write(QStringLiteral("titel.mp3"), "x");
    DrivenProgram program(screen_->Display(),
                          Arguments(folder_.Path(QStringLiteral("voll/Kalvo"))) + QStringList{title}, disk.Options());
    program.WaitForText("Form1", "lblMeldung", [](const QString& text) {
        return text.contains(QStringLiteral("Das Musikarchiv kann nicht angelegt werden: "));
    });
    const QStringList told = CloseOrderly(program);
    EXPECT_TRUE(told.contains(QStringLiteral("Die Wiedergabelisten konnten nicht gespeichert werden.")))
        << told.join(u'|').toStdString();
}

} // namespace
} // namespace kalvo::test

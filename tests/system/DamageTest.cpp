// Starts on data folders that are empty, damaged, protected or full, acted out on the real program.

#include "support/WaitUntil.h"
#include "system/DrivenProgram.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

const QByteArray kZeros(4096, '\0');

class DamageTest : public DrivenTest {};

TEST_F(DamageTest, AFirstStartInAnEmptyHomeLaysEverythingOut) {
    const QMap<QString, QString> home{
        {u"HOME"_s, folder_.Path()}, {u"XDG_DOCUMENTS_DIR"_s, {}}, {u"XDG_CONFIG_HOME"_s, folder_.Path(u".config"_s)}};
    DrivenProgram program(screen_->Display(), {u"--geraet"_s, u"0"_s}, {{}, home, {}});
    const QString documents = program.WaitFor("frmStart").Label("Label19");
    EXPECT_TRUE(documents.startsWith(folder_.Path())) << documents.toStdString();
    program.Press("frmStart", u"Starten"_s);
    program.WaitForMessage({u"0 Titel gefunden"_s});
    const QDir data(documents + u"/Kalvo"_s);
    for (const char* name : {"Musikarchiv/default.mav", "Wiedergabeliste/default.mav", "Temp", "CdArchiv", "Musik",
                             "Hintergruende", "Sample", "mp3tabelle.dll", "meta.dat"})
        EXPECT_TRUE(WaitUntil([&] { return data.exists(QLatin1String(name)); })) << name;
    EXPECT_TRUE(program.CloseOrderly().isEmpty());
    EXPECT_TRUE(data.exists(u"kalvo.ini"_s) && data.exists(u"kalvo.dll"_s));
}

TEST_F(DamageTest, ADamagedFileOfEachKindIsSetAsideAndToldOnce) {
    const std::pair<const char*, QByteArray> cases[] = {{"kalvo.ini", kZeros},
                                                        {"kalvo.dll", "kein,Wert,davon"},
                                                        {"mp3tabelle.dll", kZeros},
                                                        {"optionen.dll", kZeros},
                                                        {"sitzung.json", "{\"format\":1,\"pla"},
                                                        {"Charts", kZeros},
                                                        {"Musikarchiv/default.mav", "kein Archiv" + kZeros},
                                                        {"Wiedergabeliste/default.mav", "keine Liste" + kZeros}};
    for (const auto& [file, content] : cases) {
        SCOPED_TRACE(file);
        const TestFolder place;
        const QFileInfo damaged(place.Write(QLatin1String(file), content));
        {
            DrivenProgram program(screen_->Display(), Arguments(place.Path()));
            EXPECT_EQ(program.WaitForMessage({u"Titel gefunden"_s, u".defekt-"_s}).count(u".defekt-"_s), 1);
            program.CloseOrderly();
        }
        const QFileInfoList aside = damaged.dir().entryInfoList({damaged.fileName() + u".defekt-*"_s});
        ASSERT_EQ(aside.size(), 1);
        EXPECT_EQ(place.Read(QDir(place.Path()).relativeFilePath(aside.front().filePath())), content);
        DrivenProgram next(screen_->Display(), Arguments(place.Path()));
        EXPECT_FALSE(next.WaitForMessage().contains(u"defekt"_s));
    }
}

TEST_F(DamageTest, AReadOnlyDataFolderIsUsedAsItStands) {
    const auto setMode = [this](const QString& mode) {
        EXPECT_EQ(QProcess::execute(u"chmod"_s, {u"-R"_s, mode, folder_.Path()}), 0);
    };
    RunToItsEnd();
    setMode(u"a-w,a+rX"_s);
    const ProgramFolder place; // the other user may not reach the build
    const QByteArray settings = folder_.Read(u"Kalvo/kalvo.ini"_s);
    DrivenOptions options;
    options.programFolder = place.Path();
    if (::getuid() == 0) // nothing is protected from this user
        options.inChild = [] {
            if (::setgid(65534) != 0 || ::setuid(65534) != 0)
                ::_exit(99);
        };
    DrivenProgram program(screen_->Display(), Arguments(), options);
    program.WaitForMessage(
        {u"Titel gefunden"_s, u"Das Musikarchiv ist schreibgeschützt. Es kann nur gelesen werden."_s});
    program.CloseOrderly();
    EXPECT_EQ(folder_.Read(u"Kalvo/kalvo.ini"_s), settings);
    setMode(u"u+w"_s);
}

TEST_F(DamageTest, AFolderThatCannotBeMadeIsTold) {
    folder_.Write(u"datei"_s, "no folder");
    DrivenProgram program(screen_->Display(), Arguments(folder_.Path(u"datei/Kalvo"_s)));
    program.WaitForMessage(
        {u"Der Datenordner kann nicht angelegt werden: "_s, u"Das Musikarchiv kann nicht angelegt werden: "_s});
    program.CloseOrderly();
}

/** A disk of its own that can be filled; where none may be mounted, programs may not write a byte instead. */
class SmallDisk {
public:
    explicit SmallDisk(const QString& path) : path_(path) {
        QDir().mkpath(path);
        mounted_ = ::mount("none", Native().c_str(), "tmpfs", 0, "size=2m") == 0;
    }
    ~SmallDisk() {
        if (mounted_)
            ::umount2(Native().c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /** For programs that are started on the full disk from now on. */
    DrivenOptions Fill() const {
        DrivenOptions options;
        if (mounted_) {
            QFile filler(path_ + u"/voll"_s);
            EXPECT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            while (filler.write(kZeros) == kZeros.size()) {
            }
            return options;
        }
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
    const SmallDisk disk(folder_.Path(u"voll"_s));
    const QString title = folder_.Write(u"titel.mp3"_s, "x");
    DrivenProgram program(screen_->Display(), Arguments(folder_.Path(u"voll/Kalvo"_s)) + QStringList{title},
                          disk.Fill());
    program.WaitForMessage({u"Das Musikarchiv kann nicht angelegt werden: "_s});
    EXPECT_EQ(program.CloseOrderly(), QStringList{u"Die Wiedergabelisten konnten nicht gespeichert werden."_s});
}

TEST_F(DamageTest, ADiskThatHasBecomeFullLosesNothing) {
    const SmallDisk disk(Data());
    RunToItsEnd();
    const auto contents = [this] {
        QList<QByteArray> all;
        for (const char* name : {"kalvo.ini", "kalvo.dll", "mp3tabelle.dll", "meta.dat", "Musikarchiv/default.mav"})
            all.append(folder_.Read(u"Kalvo/"_s + QLatin1String(name)));
        return all;
    };
    const QList<QByteArray> before = contents();
    DrivenProgram program(screen_->Display(), Arguments(), disk.Fill());
    program.WaitForMessage({u"0 Titel gefunden"_s, u"Es kann nur gelesen werden."_s});
    program.CloseOrderly();
    EXPECT_EQ(contents(), before);
}

} // namespace
} // namespace kalvo::test

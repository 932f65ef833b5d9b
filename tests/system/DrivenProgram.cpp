#include "system/DrivenProgram.h"

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds kPatience{60};

QString Built(const QString& name) {
    return qEnvironmentVariable("KALVO_BIN") + u'/' + name;
}

SeenWindow WindowOf(const QJsonObject& json) {
    return {json[u"name"].toString(), json[u"title"].toString(), json[u"labels"].toObject().toVariantMap(),
            json[u"buttons"].toObject().toVariantMap()};
}

} // namespace

ProgramResult RunProgram(const QStringList& arguments) {
    QProcess program;
    program.start(Built(u"kalvo"_s), arguments);
    const bool done = program.waitForFinished(240'000) && program.exitStatus() == QProcess::NormalExit;
    return {done ? program.exitCode() : -1, QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

ProgramFolder::ProgramFolder() {
    QFile::setPermissions(folder_.Path(), QFile::permissions(folder_.Path()) | QFile::ReadOther | QFile::ExeOther);
    EXPECT_TRUE(QDir().mkpath(Path("plugins/generic")));
    for (const char* name : {"kalvo", "bass.dll", "BASSenc.dll", "CdBase.ocx", "plugins/generic/libkalvo_witness.so"})
        EXPECT_TRUE(QFile::copy(Built(QLatin1String(name)), Path(name))) << name;
}

void ProgramFolder::Do(Harm harm, const char* name) const {
    QFile::remove(Path(name));
    if (harm == Harm::Damaged)
        folder_.Write(QLatin1String(name), "this is no library");
    EXPECT_TRUE(QDir().mkpath(QFileInfo(Path(name)).path()));
    EXPECT_TRUE(harm != Harm::Old || QFile::copy(Built(u"plugins/veraltet.dll"_s), Path(name)));
}

bool XServer::IsInstalled() {
    return !QStandardPaths::findExecutable(u"Xvfb"_s).isEmpty();
}

XServer::XServer() {
    // The server chooses a free display by itself and tells its number on standard output. Without -noreset it refuses
    // who comes just when its only client has gone.
    server_.setStandardErrorFile(QProcess::nullDevice());
    server_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-ac"_s, u"-nolisten"_s, u"tcp"_s, u"-screen"_s, u"0"_s,
                              u"1280x800x24"_s, u"-noreset"_s});
    QByteArray number;
    while (!number.endsWith('\n') && server_.waitForReadyRead(20'000))
        number += server_.readAllStandardOutput();
    EXPECT_TRUE(number.endsWith('\n'));
    if (number.endsWith('\n'))
        display_ = ':' + number.trimmed();
}

XServer::~XServer() {
    server_.terminate();
    if (!server_.waitForFinished(5'000))
        server_.kill();
    server_.waitForFinished();
}

QProcessEnvironment EnvironmentOnScreen(const QByteArray& display, const QMap<QString, QString>& variables) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(display));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"SDL_AUDIODRIVER"_s, u"dummy"_s);       // what is driven here is not listened to
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s); // the X libraries keep what they have
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    return environment;
}

DrivenProgram::DrivenProgram(const QByteArray& display, const QStringList& arguments, const DrivenOptions& options) {
    const QString folder = options.programFolder.isEmpty() ? qEnvironmentVariable("KALVO_BIN") : options.programFolder;
    static int number = 0;
    server_.setSocketOptions(QLocalServer::WorldAccessOption);
    EXPECT_TRUE(server_.listen(u"kalvo-zeuge-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++number)));
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Listen(); });
    QMap<QString, QString> environment{{u"QT_QPA_GENERIC_PLUGINS"_s, u"kalvowitness"_s},
                                       {u"QT_PLUGIN_PATH"_s, folder + u"/plugins"_s},
                                       {u"KALVO_WITNESS"_s, server_.fullServerName()}};
    environment.insert(options.environment);
    program_.setProcessEnvironment(EnvironmentOnScreen(display, environment));
    program_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    if (options.inChild)
        program_.setChildProcessModifier(options.inChild);
    program_.start(folder + u"/kalvo"_s, arguments);
    EXPECT_TRUE(program_.waitForStarted()) << folder.toStdString();
}

DrivenProgram::~DrivenProgram() {
    Kill();
}

void DrivenProgram::Listen() {
    socket_ = server_.nextPendingConnection();
    QObject::connect(socket_, &QLocalSocket::readyRead, &server_, [this] {
        while (socket_->canReadLine()) {
            windows_.clear();
            const QJsonArray told = QJsonDocument::fromJson(socket_->readLine()).object()[u"windows"].toArray();
            for (const auto window : told)
                windows_.append(WindowOf(window.toObject()));
        }
    });
}

SeenWindow DrivenProgram::See(const char* window) const {
    for (const SeenWindow& seen : windows_)
        if (seen.name == QLatin1String(window))
            return seen;
    return {};
}

SeenWindow DrivenProgram::WaitFor(const char* window, const QString& but) {
    EXPECT_TRUE(
        WaitUntil([&] { return IsOpen(window) && (but.isNull() || See(window).Label("lblText") != but); }, kPatience))
        << window << (IsRunning() ? " running" : " ended ") << program_.exitCode();
    return See(window);
}

QString DrivenProgram::WaitForText(const char* label, const std::function<bool(const QString&)>& wanted) {
    const bool came = WaitUntil([&] { return wanted(See("Form1").Label(label)); }, kPatience);
    EXPECT_TRUE(came) << label << ": " << See("Form1").Label(label).toStdString();
    return came ? See("Form1").Label(label) : QString();
}

QString DrivenProgram::WaitForMessage(const QStringList& parts) {
    return WaitForText("lblMeldung", [&parts](const QString& text) {
        return std::all_of(parts.begin(), parts.end(), [&text](const QString& part) { return text.contains(part); });
    });
}

void DrivenProgram::Send(const QJsonObject& order) {
    ASSERT_NE(socket_, nullptr);
    socket_->write(QJsonDocument(order).toJson(QJsonDocument::Compact) + '\n');
    socket_->flush();
}

void DrivenProgram::Press(const char* window, const QString& button) {
    Send({{u"window"_s, QLatin1String(window)}, {u"press"_s, button}});
}

void DrivenProgram::Close(const char* window) {
    Send({{u"window"_s, QLatin1String(window)}, {u"close"_s, true}});
}

void DrivenProgram::CloseAndAnswer(const QString& answer) {
    Close("Form1");
    const SeenWindow question = WaitFor("xMessageBox");
    EXPECT_EQ(question.title, u"Achtung!"_s);
    EXPECT_EQ(question.Label("lblText"), u"Wollen Sie Kalvo wirklich beenden?"_s);
    Press("xMessageBox", answer);
}

QStringList DrivenProgram::CloseOrderly() {
    CloseAndAnswer(u"Ja"_s);
    QString last = u"Wollen Sie Kalvo wirklich beenden?"_s;
    QStringList told;
    WaitUntil([&] {
        const QString text = See("xMessageBox").Label("lblText");
        if (!text.isEmpty() && text != last) {
            told.append(last = text);
            Press("xMessageBox", u"ok"_s);
        }
        return !IsRunning();
    });
    EXPECT_EQ(WaitForExit(), 0);
    return told;
}

int DrivenProgram::WaitForExit() {
    WaitUntil([this] { return !IsRunning(); }, kPatience);
    return !IsRunning() && program_.exitStatus() == QProcess::NormalExit ? program_.exitCode() : -1;
}

void DrivenProgram::Kill() {
    program_.kill();
    program_.waitForFinished();
}

void DrivenTest::SetUp() {
    if (!XServer::IsInstalled())
        GTEST_SKIP() << "Xvfb is not installed";
    screen_ = std::make_unique<XServer>();
}

QStringList DrivenTest::Arguments(const QString& data) const {
    return {u"--datenordner"_s, data.isEmpty() ? folder_.Path(u"Kalvo"_s) : data, u"--geraet"_s, u"0"_s,
            u"--ohne-startauswahl"_s};
}

QString DrivenTest::RunToItsEnd() const {
    DrivenProgram program(screen_->Display(), Arguments());
    const QString told = program.WaitForMessage();
    EXPECT_TRUE(program.CloseOrderly().isEmpty());
    return told;
}

} // namespace kalvo::test

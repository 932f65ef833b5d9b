#include "system/DrivenProgram.h"

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds kPatience{60};
constexpr const char* kWitness = "plugins/generic/libkalvo_witness.so";

QString Built(const QString& name) {
    return qEnvironmentVariable("KALVO_BIN") + u'/' + name;
}

SeenWindow WindowOf(const QJsonObject& json) {
    SeenWindow window{json[u"name"].toString(), json[u"title"].toString(), {}, {}};
    const QJsonObject labels = json[u"labels"].toObject();
    for (auto label = labels.begin(); label != labels.end(); ++label)
        window.labels[label.key()] = label.value().toString();
    const QJsonObject buttons = json[u"buttons"].toObject();
    for (auto button = buttons.begin(); button != buttons.end(); ++button)
        window.buttons[button.key()] = button.value().toBool();
    return window;
}

} // namespace

QString SeenWindow::Label(const char* label) const {
    const auto found = labels.find(QLatin1String(label));
    return found == labels.end() ? QString() : found->second;
}

ProgramFolder::ProgramFolder() {
    QFile::setPermissions(folder_.Path(), QFile::permissions(folder_.Path()) | QFile::ReadOther | QFile::ExeOther);
    EXPECT_TRUE(QDir().mkpath(Path("plugins/generic")));
    for (const char* name : {"kalvo", "bass.dll", "BASSenc.dll", "CdBase.ocx", kWitness})
        EXPECT_TRUE(QFile::copy(Built(QLatin1String(name)), Path(name))) << name;
}

void ProgramFolder::Do(Harm harm, const char* name) const {
    QFile::remove(Path(name));
    if (harm == Harm::Damaged)
        folder_.Write(QLatin1String(name), "this is no library");
    EXPECT_TRUE(QDir().mkpath(QFileInfo(Path(name)).path()));
    EXPECT_TRUE(harm != Harm::Old || QFile::copy(Built(u"plugins/veraltet.dll"_s), Path(name)));
}

DrivenProgram::DrivenProgram(const QByteArray& display, const QStringList& arguments, const DrivenOptions& options) {
    const QString folder = options.programFolder.isEmpty() ? qEnvironmentVariable("KALVO_BIN") : options.programFolder;
    static int number = 0;
    server_.setSocketOptions(QLocalServer::WorldAccessOption);
    EXPECT_TRUE(server_.listen(u"kalvo-zeuge-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++number)));
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Listen(); });
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(display));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"kalvowitness"_s);
    environment.insert(u"QT_PLUGIN_PATH"_s, folder + u"/plugins"_s);
    environment.insert(u"KALVO_WITNESS"_s, server_.fullServerName());
    environment.insert(u"SDL_AUDIODRIVER"_s, u"dummy"_s);       // what is driven here is not listened to
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s); // the X libraries keep what they have
    for (auto variable = options.environment.begin(); variable != options.environment.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    program_.setProcessEnvironment(environment);
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
        << window << (program_.state() == QProcess::Running ? " running" : " ended ") << program_.exitCode();
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
    return program_.state() == QProcess::NotRunning && program_.exitStatus() == QProcess::NormalExit
               ? program_.exitCode()
               : -1;
}

bool DrivenProgram::IsRunning() {
    return program_.state() != QProcess::NotRunning;
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

} // namespace kalvo::test

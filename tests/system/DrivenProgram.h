#pragma once

#include "support/TestFolder.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QVariantMap>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace kalvo::test {

struct ProgramResult {
    int exitCode = -1; ///< -1: it did not start, crashed or did not end in time
    QString output;
    QString errors;
};

/** Runs the built program without a window to its end. */
ProgramResult RunProgram(const QStringList& arguments);

/** A screen of its own that nobody sees, for programs that are started as a whole. Fails the test if none starts. */
class XServer {
public:
    static bool IsInstalled();

    XServer();
    ~XServer();

    /** For the variable DISPLAY, e.g. ":1"; empty when it did not start. */
    QByteArray Display() const { return display_; }

private:
    QProcess server_;
    QByteArray display_;
};

/** A window of a running program, as it stands on the screen. */
struct SeenWindow {
    QString name; ///< its objectName; empty: there is no such window
    QString title;
    QVariantMap labels;  ///< text by objectName
    QVariantMap buttons; ///< whether it can be pressed, by caption

    QString Label(const char* label) const { return labels[QLatin1String(label)].toString(); }
};

/** A folder with the program and its components, readable to everybody, to take away or damage one. */
class ProgramFolder {
public:
    enum class Harm { Missing, Damaged, Old };

    ProgramFolder();

    QString Path(const char* name = "") const { return folder_.Path(QLatin1String(name)); }
    /** Does this to a component; Old: puts one of another version in its place. */
    void Do(Harm harm, const char* name) const;

private:
    TestFolder folder_;
};

struct DrivenOptions {
    QString programFolder; ///< empty: where the program was built
    QMap<QString, QString> environment;
    std::function<void()> inChild; ///< runs in the new process before the program: limits, another user
};

/** The system's variables for a program without sound on a display, and further ones. */
QProcessEnvironment EnvironmentOnScreen(const QByteArray& display, const QMap<QString, QString>& variables);

/** The real program on an X display, seen and worked through a plugin; killed at the end when it still runs. */
class DrivenProgram {
public:
    DrivenProgram(const QByteArray& display, const QStringList& arguments, const DrivenOptions& options = {});
    ~DrivenProgram();

    /** Waits for a window of this name; with `but` not one of this text (its label "lblText"). */
    SeenWindow WaitFor(const char* window, const QString& but = {});
    /** Waits until a label of the main window has a text that the test takes; the text, empty when it does not come. */
    QString WaitForText(const char* label, const std::function<bool(const QString&)>& wanted);
    /** Waits until all of this stands in the status line's message; the whole message. */
    QString WaitForMessage(const QStringList& parts = {QStringLiteral("Titel gefunden")});
    /** The window as it was told last. */
    SeenWindow See(const char* window) const;
    bool IsOpen(const char* window) const { return !See(window).name.isEmpty(); }
    void Press(const char* window, const QString& button);
    void Close(const char* window);
    /** Closes the main window and presses this at its question. */
    void CloseAndAnswer(const QString& answer);
    /** Closes the program as its user does and waits for its end; the texts of what it tells on the way. */
    QStringList CloseOrderly();

    /** Waits for the end; -1 when it crashed, was killed or does not end. */
    int WaitForExit();
    bool IsRunning() const { return program_.state() != QProcess::NotRunning; }
    /** As the system does at a logout. */
    void Terminate() { program_.terminate(); }
    /** As `kill -9`. */
    void Kill();

private:
    void Send(const QJsonObject& order);
    void Listen();

    QLocalServer server_;
    QLocalSocket* socket_ = nullptr;
    QList<SeenWindow> windows_;
    QProcess program_;
};

/** A screen and a data folder for the programs of a test. */
class DrivenTest : public ::testing::Test {
protected:
    void SetUp() override;

    QString Data(const char* name = "") const { return folder_.Path(QStringLiteral("Kalvo/") + QLatin1String(name)); }
    /** For a program without sound on a data folder, the test's own by default, without the start option dialog. */
    QStringList Arguments(const QString& data = {}) const;
    /** A whole run, which ends without a message; what the status line tells in it. */
    QString RunToItsEnd() const;

    TestFolder folder_;
    std::unique_ptr<XServer> screen_;
};

} // namespace kalvo::test

#pragma once

#include <QProcess>
#include <gtest/gtest.h>

namespace kalvo::test {

/** Another program, run to its end. */
struct ToolRun {
    explicit ToolRun(const QString& program, const QStringList& arguments, const QString& dataHome = {}) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        if (!dataHome.isEmpty())
            environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
            code = process.exitCode();
        said = process.readAll();
    }

    int code = -1; ///< -1: did not run to its end
    QByteArray said;
};

} // namespace kalvo::test

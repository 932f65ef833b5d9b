#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kalvo::test {

/** A folder of its own for one test, gone with it. */
class TestFolder {
public:
    TestFolder() { EXPECT_TRUE(folder_.isValid()); }

    /** Absolute path of a name in it. */
    QString Path(const QString& name = {}) const { return name.isEmpty() ? folder_.path() : folder_.filePath(name); }
    /** Writes a file, its folders included; returns its path. */
    QString Write(const QString& name, const QByteArray& content) const {
        const QString path = Path(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << path.toStdString();
        return path;
    }
    /** Content of a file; empty when there is none. */
    QByteArray Read(const QString& name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir folder_;
};

} // namespace kalvo::test

#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace kalvo::test {

/** A folder of its own for one test, gone with it. */
class TestFolder {
public:
    TestFolder();

    /** Absolute path of a name in it. */
    QString Path(const QString& name = {}) const;
    /** Writes a file, its folders included; returns its path. */
    QString Write(const QString& name, const QByteArray& content) const;
    /** Content of a file; empty when there is none. */
    QByteArray Read(const QString& name) const;

private:
    QTemporaryDir folder_;
};

} // namespace kalvo::test

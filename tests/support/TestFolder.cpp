#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace kalvo::test {

TestFolder::TestFolder() {
    EXPECT_TRUE(folder_.isValid());
}

QString TestFolder::Path(const QString& name) const {
    return name.isEmpty() ? folder_.path() : folder_.filePath(name);
}

QString TestFolder::Write(const QString& name, const QByteArray& content) const {
    const QString path = Path(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << path.toStdString();
    return path;
}

QByteArray TestFolder::Read(const QString& name) const {
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace kalvo::test

// Signs the components that Kalvo downloads, for whoever publishes them.
#include "app/ComponentSignature.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTextStream>

#include <optional>

namespace {

constexpr int kUsage = 2;
using kalvo::ComponentSignature::KeyPair;

std::optional<QByteArray> Content(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QTextStream(stderr) << "Nicht lesbar: " << path << "\n";
        return {};
    }
    return file.readAll();
}

/** mode: NewOnly for what must not be lost. */
bool Store(const QString& path, const QByteArray& content, QIODevice::OpenMode mode) {
    QFile file(path);
    const bool stored = file.open(QIODevice::WriteOnly | mode) && file.write(content) == content.size() && file.flush();
    if (!stored)
        QTextStream(stderr) << "Nicht zu schreiben: " << path << " (" << file.errorString() << ")\n";
    return stored;
}

int MakeKeys(const QString& secretPath) {
    const KeyPair keys = kalvo::ComponentSignature::NewKeys();
    if (keys.secretKey.isEmpty() || !Store(secretPath, {}, QIODevice::NewOnly) ||
        !QFile::setPermissions(secretPath, QFile::ReadOwner | QFile::WriteOwner) ||
        !Store(secretPath, keys.secretKey + '\n', QIODevice::Truncate))
        return 1;
    QTextStream(stdout) << keys.publicKey << "\n";
    return 0;
}

int Sign(const QString& secretPath, const QStringList& files) {
    const auto key = Content(secretPath);
    for (const QString& path : files) {
        const auto content = Content(path);
        if (!key || !content)
            return 1;
        const QByteArray signature = kalvo::ComponentSignature::Sign(QFileInfo(path).fileName(), *content, *key);
        if (signature.isEmpty()) {
            QTextStream(stderr) << "Kein geheimer Schlüssel: " << secretPath << "\n";
            return 1;
        }
        if (!Store(path + QStringLiteral(".sig"), signature, QIODevice::Truncate))
            return 1;
    }
    return 0;
}

int Check(const QString& publicKey, const QStringList& files) {
    int code = 0;
    for (const QString& path : files) {
        const auto content = Content(path);
        const auto signature = Content(path + QStringLiteral(".sig"));
        const bool right =
            content && signature &&
            kalvo::ComponentSignature::Verify(QFileInfo(path).fileName(), *content, *signature, publicKey.toLatin1());
        QTextStream(stdout) << path << (right ? ": in Ordnung\n" : ": FALSCH\n");
        code = right ? code : 1;
    }
    return code;
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    const QString task = arguments.value(0);
    if (task == u"schluessel" && arguments.size() == 2)
        return MakeKeys(arguments[1]);
    if (task == u"signieren" && arguments.size() > 2)
        return Sign(arguments[1], arguments.mid(2));
    if (task == u"pruefen" && arguments.size() > 2)
        return Check(arguments[1], arguments.mid(2));
    QTextStream(stderr)
        << "kalvo-signieren schluessel GEHEIM            neues Schlüsselpaar: der geheime in die Datei, "
           "der öffentliche auf die Ausgabe\n"
           "kalvo-signieren signieren GEHEIM DATEI...    schreibt DATEI.sig\n"
           "kalvo-signieren pruefen ÖFFENTLICH DATEI...  prüft DATEI.sig\n";
    return kUsage;
}

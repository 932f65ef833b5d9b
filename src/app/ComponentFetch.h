#pragma once

#include "app/HttpFetch.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

namespace kalvo {

/** Where components come from and go to. */
struct ComponentSource {
    QUrl address;          ///< the server's folder, e.g. "https://…/download"; empty: none was built in
    QByteArray publicKey;  ///< ComponentSignature's; empty: none was built in
    QString programFolder; ///< of the executable
    qint64 mostBytes = 64LL << 20;
    FetchLimits limits = {};

    /** What this program was built with. */
    static ComponentSource OfBuild();
};

/**
 * Downloads a component and puts it in its place, once its signature is found right: "CDDB" is "CdBase.ocx" of the
 * program folder; "wenzo" is "Temp/wenzo.dll" below it, which the next start installs, and "BASSenc.dll" too when that
 * cannot be used. Nothing is written before everything has arrived and is proven, and then all files or none.
 * UI thread.
 */
class ComponentFetch : public QObject {
    Q_OBJECT

public:
    explicit ComponentFetch(const ComponentSource& source, QObject* parent = nullptr);

    /** Ends with Finished, possibly before it returns. A running one is given up. */
    void Start(const QString& component);
    /** Gives up a running download; Finished follows. */
    void Cancel();

Q_SIGNALS:
    /** Of the file that arrives: its name, 0..100 or -1 while its size is not known. */
    void Progress(const QString& file, int percent);
    /** A German sentence or two tell how it went. */
    void Finished(bool installed, const QString& message);

private:
    struct File {
        QString name;   ///< on the server
        QString target; ///< absolute path
        QByteArray signature;
        QByteArray content;
    };

    QString Fault(const QString& component) const;
    void CollectFiles(const QString& component);
    void FetchNext();
    void Take(const QByteArray& content);
    void TakeFailure(const QString& reason, bool missing);
    bool Install();
    static bool WriteBeside(const File& file);
    static QString Beside(const File& file);
    void End(bool installed, const QString& message);

    ComponentSource source_;
    HttpFetch http_;
    QString component_;
    QList<File> files_;
    qsizetype current_ = 0;
    bool running_ = false;
};

} // namespace kalvo

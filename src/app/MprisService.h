#pragma once

#include "app/MprisValues.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <memory>

class QDBusConnection;

namespace kalvo {

class DeskRemote;
class MprisPlayerAdaptor;

/**
 * The desk on the session's bus as "org.mpris.MediaPlayer2.kalvo": desktops send their media keys there and show what
 * is on air. A second program, on another data folder, adds ".instance" and its process number. UI thread; nothing here
 * waits for the bus.
 */
class MprisService : public QObject {
    Q_OBJECT

public:
    explicit MprisService(DeskRemote& remote, QObject* parent = nullptr);
    ~MprisService() override;

    /** From now on the desk is looked at, whether or not anybody on the bus is told. */
    void Watch();
    /** Takes its name there. */
    void Register(const QDBusConnection& bus);
    void Unregister();

    /** Of the cover of the title on air; empty: none. */
    void SetArtUrl(const QString& url);
    /** Soon looks at the desk again. */
    void Refresh();

    const DeskFacts& Facts() const { return facts_; }
    QVariant Value(const QString& property) const { return told_.value(property); }
    DeskRemote& Remote() { return remote_; }

Q_SIGNALS:
    /** Another title is on air, or none. */
    void TitleChanged();
    void RaiseWanted();
    void QuitWanted();
    void FilesGiven(const QStringList& files);

private:
    void Tell();
    void TellPosition();
    void AskForName(const QString& name, bool mayBeTaken);

    DeskRemote& remote_;
    MprisPlayerAdaptor* player_;
    std::unique_ptr<QDBusConnection> bus_; ///< null while not registered
    QString name_;
    QString artUrl_;
    DeskFacts facts_;
    QVariantMap told_;
    QTimer soon_; ///< many changes at once are told once
    QTimer look_; ///< for what nobody tells: lists, volume, jumps of the position
    double position_ = 0;
    QElapsedTimer since_; ///< position_ was looked at
};

} // namespace kalvo

#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>

#include <algorithm>

namespace kalvo {

class MprisService;

// The two interfaces of MPRIS as they stand on the bus: names and types are given. What is asked and told belongs to
// the service; every call returns at once.

/** org.mpris.MediaPlayer2 */
class MprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ Yes CONSTANT)
    Q_PROPERTY(bool CanRaise READ Yes CONSTANT)
    Q_PROPERTY(bool HasTrackList READ No CONSTANT)
    Q_PROPERTY(QString Identity READ Identity CONSTANT)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry CONSTANT)
    Q_PROPERTY(QStringList SupportedUriSchemes READ SupportedUriSchemes CONSTANT)
    Q_PROPERTY(QStringList SupportedMimeTypes READ SupportedMimeTypes CONSTANT)

public:
    explicit MprisRootAdaptor(MprisService& service);

    bool Yes() const { return true; }
    bool No() const { return false; }
    QString Identity() const;
    QString DesktopEntry() const;
    QStringList SupportedUriSchemes() const;
    QStringList SupportedMimeTypes() const;

public Q_SLOTS:
    void Raise();
    void Quit();

private:
    MprisService& service_;
};

/** org.mpris.MediaPlayer2.Player; times are microseconds. */
class MprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(double Rate READ Rate WRITE SetRate)
    Q_PROPERTY(double MinimumRate READ MinimumRate)
    Q_PROPERTY(double MaximumRate READ MaximumRate)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(double Volume READ Volume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious CONSTANT)
    Q_PROPERTY(bool CanPlay READ CanPlay)
    Q_PROPERTY(bool CanPause READ CanPause)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl CONSTANT)

public:
    explicit MprisPlayerAdaptor(MprisService& service);

    QString PlaybackStatus() const;
    double Rate() const;
    /** The pitch is the DJ's: nothing happens. */
    void SetRate(double /*rate*/) {}
    double MinimumRate() const { return std::min(1.0, Rate()); }
    double MaximumRate() const { return std::max(1.0, Rate()); }
    QVariantMap Metadata() const;
    double Volume() const;
    void SetVolume(double volume);
    qlonglong Position() const;
    bool CanGoNext() const;
    bool CanGoPrevious() const { return false; }
    bool CanPlay() const;
    bool CanPause() const;
    bool CanSeek() const;
    bool CanControl() const { return true; }

public Q_SLOTS:
    void Next();
    /** Nothing: a title on air is not taken back by a key. */
    void Previous() {}
    void Pause();
    void PlayPause();
    void Stop();
    void Play();
    void Seek(qlonglong offset);
    void SetPosition(const QDBusObjectPath& track, qlonglong position);
    /** The file goes to the end of the active list. */
    void OpenUri(const QString& address);

Q_SIGNALS:
    void Seeked(qlonglong position);

private:
    MprisService& service_;
};

} // namespace kalvo

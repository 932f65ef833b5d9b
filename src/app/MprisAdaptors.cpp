#include "app/MprisAdaptors.h"

#include "app/DeskRemote.h"
#include "app/MprisService.h"
#include "app/MprisValues.h"

#include <QUrl>

#include <cmath>

namespace kalvo {

MprisRootAdaptor::MprisRootAdaptor(MprisService& service) : QDBusAbstractAdaptor(&service), service_(service) {}

QString MprisRootAdaptor::Identity() const {
    return QStringLiteral("Kalvo");
}

QString MprisRootAdaptor::DesktopEntry() const {
    return QStringLiteral("kalvo");
}

QStringList MprisRootAdaptor::SupportedUriSchemes() const {
    return {QStringLiteral("file")};
}

QStringList MprisRootAdaptor::SupportedMimeTypes() const {
    return mpris::MimeTypes();
}

void MprisRootAdaptor::Raise() {
    Q_EMIT service_.RaiseWanted();
}

void MprisRootAdaptor::Quit() {
    Q_EMIT service_.QuitWanted();
}

MprisPlayerAdaptor::MprisPlayerAdaptor(MprisService& service) : QDBusAbstractAdaptor(&service), service_(service) {}

QString MprisPlayerAdaptor::PlaybackStatus() const {
    return service_.Value(QStringLiteral("PlaybackStatus")).toString();
}

double MprisPlayerAdaptor::Rate() const {
    return service_.Value(QStringLiteral("Rate")).toDouble();
}

QVariantMap MprisPlayerAdaptor::Metadata() const {
    return service_.Value(QStringLiteral("Metadata")).toMap();
}

double MprisPlayerAdaptor::Volume() const {
    return service_.Value(QStringLiteral("Volume")).toDouble();
}

void MprisPlayerAdaptor::SetVolume(double volume) {
    service_.Remote().SetVolume(volume);
}

qlonglong MprisPlayerAdaptor::Position() const {
    return std::llround(service_.Remote().Position() * mpris::kMicroseconds);
}

bool MprisPlayerAdaptor::CanGoNext() const {
    return service_.Value(QStringLiteral("CanGoNext")).toBool();
}

bool MprisPlayerAdaptor::CanPlay() const {
    return service_.Value(QStringLiteral("CanPlay")).toBool();
}

bool MprisPlayerAdaptor::CanPause() const {
    return service_.Value(QStringLiteral("CanPause")).toBool();
}

bool MprisPlayerAdaptor::CanSeek() const {
    return service_.Value(QStringLiteral("CanSeek")).toBool();
}

void MprisPlayerAdaptor::Next() {
    service_.Remote().Next();
}

void MprisPlayerAdaptor::Pause() {
    service_.Remote().Pause();
}

void MprisPlayerAdaptor::PlayPause() {
    service_.Remote().PlayPause();
}

void MprisPlayerAdaptor::Stop() {
    service_.Remote().Stop();
}

void MprisPlayerAdaptor::Play() {
    service_.Remote().Play();
}

void MprisPlayerAdaptor::Seek(qlonglong offset) {
    service_.Remote().SeekBy(static_cast<double>(offset) / mpris::kMicroseconds);
}

void MprisPlayerAdaptor::SetPosition(const QDBusObjectPath& track, qlonglong position) {
    service_.Remote().SeekTo(track.path().section(u'/', -1).toInt(),
                             static_cast<double>(position) / mpris::kMicroseconds);
}

void MprisPlayerAdaptor::OpenUri(const QString& address) {
    if (const QUrl url(address); url.isLocalFile())
        Q_EMIT service_.FilesGiven({url.toLocalFile()});
}

} // namespace kalvo

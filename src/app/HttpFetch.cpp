#include "app/HttpFetch.h"

#include <QHostAddress>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace kalvo {

namespace {

constexpr int kMostRedirects = 5;
constexpr int kNotFound = 404;
constexpr int kGone = 410;

int StatusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

QUrl RedirectOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
}

bool IsRedirect(const QNetworkReply& reply) {
    return !RedirectOf(reply).isEmpty();
}

} // namespace

HttpFetch::HttpFetch(const FetchLimits& limits, QObject* parent) : QObject(parent), limits_(limits) {
    for (QTimer* timer : {&silence_, &whole_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this] { Fail(tr("Der Server antwortet nicht.")); });
    }
}

HttpFetch::~HttpFetch() {
    Cancel();
}

bool HttpFetch::IsSafe(const QUrl& address) {
    if (!address.isValid() || address.host().isEmpty())
        return false;
    if (address.scheme() == u"https")
        return true;
    const bool local = address.host() == u"localhost" || QHostAddress(address.host()).isLoopback();
    return address.scheme() == u"http" && local;
}

void HttpFetch::Get(const QUrl& address, qint64 mostBytes) {
    Cancel();
    mostBytes_ = mostBytes;
    redirects_ = 0;
    whole_.start(limits_.whole);
    Send(address);
}

void HttpFetch::Send(const QUrl& address) {
    if (!IsSafe(address))
        return Fail(tr("Die Adresse ist nicht gesichert: ") + address.toDisplayString());
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setRawHeader("Accept-Encoding", "identity"); // the bytes as they are signed, and their true number
    reply_ = network_.get(request);
    silence_.start(limits_.silence);
    connect(reply_, &QNetworkReply::readyRead, this, &HttpFetch::TakeBytes);
    connect(reply_, &QNetworkReply::finished, this, &HttpFetch::End);
}

void HttpFetch::Cancel() {
    silence_.stop();
    whole_.stop();
    content_.clear();
    DropReply();
}

void HttpFetch::DropReply() {
    if (QNetworkReply* reply = std::exchange(reply_, nullptr)) {
        reply->disconnect(this);
        reply->deleteLater(); // ends the transfer, too
    }
}

void HttpFetch::Follow(const QUrl& address) {
    if (++redirects_ > kMostRedirects)
        return Fail(tr("Der Server verweist im Kreis."));
    DropReply();
    Send(address);
}

void HttpFetch::TakeBytes() {
    silence_.start(limits_.silence);
    if (const int status = StatusOf(*reply_); status >= 400) // the rest is a page that tells the same
        return Fail(Reason(), status == kNotFound || status == kGone);
    const QByteArray bytes = reply_->readAll();
    if (IsRedirect(*reply_))
        return;
    content_ += bytes;
    const qint64 told = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (qMax<qint64>(told, content_.size()) > mostBytes_)
        return Fail(tr("Die Datei auf dem Server ist zu groß."));
    Q_EMIT Progress(told > 0 ? static_cast<int>(content_.size() * 100 / told) : -1);
}

void HttpFetch::End() {
    TakeBytes();
    if (reply_ == nullptr)
        return;
    if (reply_->error() != QNetworkReply::NoError)
        return Fail(Reason());
    if (IsRedirect(*reply_))
        return Follow(reply_->url().resolved(RedirectOf(*reply_)));
    const qint64 told = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (content_.isEmpty() || content_.size() < told)
        return Fail(tr("Die Verbindung ist abgerissen, bevor die Datei vollständig war."));
    const QByteArray content = std::exchange(content_, {});
    Cancel();
    Q_EMIT Done(content);
}

void HttpFetch::Fail(const QString& reason, bool missing) {
    Cancel();
    Q_EMIT Failed(reason, missing);
}

QString HttpFetch::Reason() const {
    if (const int status = StatusOf(*reply_); status >= 400)
        return tr("Der Server liefert die Datei nicht (Fehler %1).").arg(status);
    switch (reply_->error()) {
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ConnectionRefusedError:
        return tr("Der Server ist nicht erreichbar: ") + reply_->url().host();
    case QNetworkReply::SslHandshakeFailedError:
        return tr("Die gesicherte Verbindung zum Server kam nicht zustande: ") + reply_->errorString();
    case QNetworkReply::RemoteHostClosedError:
        return tr("Die Verbindung ist abgerissen, bevor die Datei vollständig war.");
    default:
        return tr("Die Übertragung ist fehlgeschlagen: ") + reply_->errorString();
    }
}

} // namespace kalvo

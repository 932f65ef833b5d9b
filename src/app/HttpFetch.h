#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>

class QNetworkReply;

namespace kalvo {

/** What a download may cost. */
struct FetchLimits {
    std::chrono::milliseconds silence = std::chrono::seconds(30); ///< without a single byte
    std::chrono::milliseconds whole = std::chrono::minutes(20);   ///< for one file
};

/**
 * Fetches one file at a time into memory, over HTTPS; over plain HTTP from this machine only, also where a server
 * refers to another address. UI thread.
 */
class HttpFetch : public QObject {
    Q_OBJECT

public:
    explicit HttpFetch(const FetchLimits& limits, QObject* parent = nullptr);
    ~HttpFetch() override;

    /** Whether the address may be asked at all. */
    static bool IsSafe(const QUrl& address);

    /** Ends with Done or Failed, possibly before it returns. mostBytes: a larger file is refused. */
    void Get(const QUrl& address, qint64 mostBytes);
    /** Ends a running fetch; no signal follows. */
    void Cancel();

Q_SIGNALS:
    /** percent: 0..100, -1 while the size is not known. */
    void Progress(int percent);
    void Done(const QByteArray& content);
    /** A German sentence; missing: the server answered that there is no such file. */
    void Failed(const QString& reason, bool missing);

private:
    void Send(const QUrl& address);
    void Follow(const QUrl& address);
    void DropReply();
    void TakeBytes();
    void End();
    void Fail(const QString& reason, bool missing = false);
    QString Reason() const;

    FetchLimits limits_;
    QNetworkAccessManager network_;
    QNetworkReply* reply_ = nullptr; ///< null while nothing is fetched
    QTimer silence_;
    QTimer whole_;
    QByteArray content_;
    qint64 mostBytes_ = 0;
    int redirects_ = 0;
};

} // namespace kalvo

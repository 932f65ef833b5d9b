#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <utility>

namespace kalvo {

/** What a guest's browser asks for; nothing in it can be trusted. */
struct GuestRequest {
    bool post = false;
    QByteArray path;                   ///< decoded, without the query
    QHash<QByteArray, QString> fields; ///< of the query and of a form
    QHash<QByteArray, QByteArray> cookies;
    QByteArray address;  ///< of the telephone
    QByteArray host;     ///< as the browser was given it, with the port
    QByteArray origin;   ///< of the page that sent a form; empty when the browser tells none
    QByteArray accepted; ///< "Accept-Language"
    bool byScript = false;
};

struct GuestResponse {
    int status = 200;
    QByteArray type = "text/html; charset=utf-8";
    QByteArray body;
    QList<std::pair<QByteArray, QByteArray>> headers;
};

} // namespace kalvo

#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace kalvo {

class BusLink;

/**
 * The desktop's notifications of what happens while the program is not in front of its user: warnings and, if wanted,
 * the title on air. UI thread; nothing here waits, and without a service nothing happens.
 */
class DesktopNotices : public QObject {
    Q_OBJECT

public:
    /** isAway: whether the user works with another program. */
    explicit DesktopNotices(std::function<bool()> isAway, QObject* parent = nullptr);

    /** The session's bus, which outlives this. */
    void SetBus(const BusLink& session);
    void SetWanted(bool warnings, bool titles);

    /** Stays until it is closed or the user is back. */
    void Warn(const QString& text);
    /** Takes the place of the last title's. */
    void TellTitle(const QString& title, const QString& artist, const QString& artUrl);
    /** The user is back: the warnings are seen in the window. */
    void Withdraw();

Q_SIGNALS:
    /** A notice has been pressed. */
    void Pressed();

private Q_SLOTS:
    void TakeAction(uint id, const QString& action);

private:
    enum class Kind : unsigned char { Warning, Title };
    struct Notice {
        Kind kind;
        QString summary;
        QString body;
        QString picture;
    };

    void Send(const Notice& notice);

    std::function<bool()> isAway_;
    const BusLink* session_ = nullptr;
    bool warnings_ = true;
    bool titles_ = false;
    QList<uint> open_; ///< warnings, as the service numbers them
    uint title_ = 0;   ///< 0: none yet
};

} // namespace kalvo

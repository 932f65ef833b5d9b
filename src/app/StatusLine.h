#pragma once

#include "widgets/LayoutMode.h"

#include <QStatusBar>
#include <QStringList>
#include <QTimer>

#include <array>

namespace kalvo {

class ElidedLabel;

/**
 * The main window's last line: how the desk mixes, what has happened, where the sound goes. The narrow layout has no
 * room for all of it: there a message takes the place of the others for some seconds.
 */
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void SetLayoutMode(LayoutMode mode);
    void SetMode(const QString& caption);
    void SetContinuous(const QString& caption);
    void SetAutomatic(const QString& caption);
    /** How often the sound has been interrupted since the start: by titles that came too late, by the machine itself.
     */
    void SetStarvations(quint64 titles, quint64 machine);
    /** What is being recorded; empty: nothing. */
    void SetRecording(const QString& text);
    /** Name of the output device. */
    void SetOutput(const QString& name);
    /** Stays until the next one, with the time it came in front. */
    void Tell(const QString& text);
    /** What must not be overlooked: for a while it stands behind whatever else is told. */
    void Warn(const QString& text);

Q_SIGNALS:
    /** Something new is to be warned of. */
    void Warned(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum Part { Mode, Continuous, Automatic, Starvations, Recording, PartCount };

    ElidedLabel* AddLabel(const QString& name, const QString& accessibleName, int stretch);
    void ShowParts();
    void ShowMessages();

    QWidget* row_;
    std::array<ElidedLabel*, PartCount> parts_;
    ElidedLabel* message_;
    ElidedLabel* output_;
    QTimer telling_; ///< runs while a message stands alone
    QTimer warning_; ///< runs while warnings keep their place
    QStringList warnings_;
    QString told_; ///< the last ordinary message
    LayoutMode mode_ = LayoutMode::Normal;
};

} // namespace kalvo

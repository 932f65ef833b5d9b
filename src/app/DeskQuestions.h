#pragma once

#include "playlists/PlaylistQuestions.h"

class QWidget;

namespace kalvo {

/** The desk's questions in its own question window, above the main window. */
class DeskQuestions final : public PlaylistQuestions {
public:
    /** The window outlives this. */
    explicit DeskQuestions(QWidget& window) : window_(window) {}

    void Tell(const QString& text) override;
    QString Ask(const QString& caption, const QString& text) override;
    bool Confirm(const QString& caption, const QString& text) override;

private:
    QWidget& window_;
};

} // namespace kalvo

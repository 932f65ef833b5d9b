#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace kalvo {

/**
 * The program's icons, by name: play pause stop next previous mute unmute headphones fade-left fade-right automatic
 * shuffle play-next play-next-removed played search folder import tag trash undo wish sampler jingle chart settings
 * record refresh tree add check close warning error drop-down unfold note; app is the program's sign and keeps its own
 * colours.
 */
class Icons {
public:
    /** size in logical pixels. One pixmap is kept per name, colour, size and ratio. Unknown name: a null pixmap. */
    static QPixmap Pixmap(const QString& name, const QColor& colour, int size, qreal devicePixelRatio = 1.0);
    /** Follows the skin by itself: text, disabled dim, switched on or selected highlightText. */
    static QIcon Icon(const QString& name);
    /** Always in this colour. */
    static QIcon Icon(const QString& name, const QColor& colour);
};

} // namespace kalvo

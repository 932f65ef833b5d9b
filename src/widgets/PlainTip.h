#pragma once

#include <QString>
#include <QTextDocument>

namespace kalvo {

/** A tooltip of a user's text, shown as it stands: Qt takes what looks like a mark-up ("<b>", "<i>") for one. */
inline QString PlainTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace kalvo

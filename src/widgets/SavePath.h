#pragma once

#include <QStringList>

class QFileDialog;

namespace kalvo {

/**
 * Runs a save dialog and gives the chosen path, with its default suffix behind it unless it has one of the endings: Qt
 * takes the name "Party 31.12" for one that has a suffix already. Empty when the dialog was left, or when a file of the
 * name with the suffix is there and shall stay. endings: with their dots, in any case. asks: false where the caller has
 * a question of its own about an existing file.
 */
QString AskSavePath(QFileDialog& dialog, const QStringList& endings, bool asks = true);

} // namespace kalvo

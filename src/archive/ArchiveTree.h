#pragma once

#include "archive/CategoryLists.h"

#include <QList>

/** What the category tree `TreeView1` holds, and what a click in it means. */
namespace kalvo::ArchiveTree {

struct Node {
    QString key; ///< empty: the spacer
    QString text;
    QString image;      ///< name of the icon, empty for none
    QList<Node> values; ///< of a category
};

/**
 * `FillArchiveTree`: the commands "Schließen" and "Aktualisieren", the spacer, the five categories with their values.
 * A value's key is its category and its index in the list, counted with the empty values that are left out. None when
 * a category file is missing: then the lists are to be built first.
 */
std::optional<QList<Node>> Fill(const DataFolder& folder);

enum class Click { Close, Rebuild, Value, Nothing };
/** What a click on a node means; Nothing for the spacer and the categories. */
Click ClickOn(QStringView key);

/** Record source of a value node; empty when the key is none. */
QString Statement(QStringView key, const QString& text);

} // namespace kalvo::ArchiveTree

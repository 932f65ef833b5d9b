#pragma once

#include "archive/CategoryLists.h"

#include <QList>

/** What the category tree `TreeView1` holds, and what a click in it means. */
namespace kalvo::ArchiveTree {

struct Node {
    QString key; ///< empty: the spacer
    QString text;
    QString image; ///< name of the icon, empty for none
};

/** A node of the top level and the values below it, maybe hundreds of thousands: their nodes are made on demand. */
struct Branch {
    struct Value {
        int index; ///< in the list, with the empty ones
        int begin; ///< in the joined values
        int length;
    };
    Node node;
    QString joined = {};     ///< of a category: its values, one after another
    QList<Value> shown = {}; ///< those that are not empty

    int Count() const { return static_cast<int>(shown.size()); }
    /** Of the value in this row, below Count(). */
    Node ValueAt(int row) const;
};

/**
 * `FillArchiveTree`: the commands "Schließen" and "Aktualisieren", the spacer, the five categories with their values.
 * A value's key is its category and its index in the list, counted with the empty values that are left out. None when
 * a category file is missing: then the lists are to be built first.
 */
std::optional<QList<Branch>> Fill(const DataFolder& folder);

enum class Click { Close, Rebuild, Value, Nothing };
/** What a click on a node means; Nothing for the spacer and the categories. */
Click ClickOn(QStringView key);

/** Record source of a value node; empty when the key is none. */
QString Statement(QStringView key, const QString& text);

} // namespace kalvo::ArchiveTree

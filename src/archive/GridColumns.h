#pragma once

#include "archive/ArchiveField.h"

#include <QList>

namespace kalvo {

class Settings;

/** One column of the archive grid. */
struct GridColumn {
    ArchiveField field = ArchiveField::Titel;
    QString caption; ///< heading; the extra fields keep their own
    int width = 0;   ///< twips, 15 per logical pixel
    bool visible = true;

    bool operator==(const GridColumn&) const = default;
};

/** The columns of the archive grid from left to right, and the sections "MA0" to "MA11" that keep them. */
namespace GridColumns {

constexpr int twipsPerPixel = 15;
constexpr int narrowestPixels = 8;
constexpr int widestPixels = 4000;

/** Whether the heading can be chosen: the extra fields stand under fixed ones. */
bool HasFreeCaption(ArchiveField field);

/**
 * Every text field, visible, in creation order; fontHeight: of the chosen font in pixels. What a grid of this width in
 * pixels has to spare goes to the columns with the long texts.
 */
QList<GridColumn> Defaults(int fontHeight, int width = 0);

/** Whether the user's columns are in the settings; else the defaults hold. */
bool AreStored(const Settings& settings);

/**
 * The stored columns; the defaults when none are stored. Always every text field once: a section that names no field,
 * or one named before, gets the first field that is left, and a width that no screen has becomes the default one. A
 * heading that is empty, or the word that stands for a missing layout, is the field's own.
 */
QList<GridColumn> Read(const Settings& settings, int fontHeight);

/** One section per column, in one pass. */
void Write(Settings& settings, const QList<GridColumn>& columns);

/** Fields of the visible columns, left to right. */
QList<ArchiveField> VisibleFields(const QList<GridColumn>& columns);

} // namespace GridColumns

} // namespace kalvo

#pragma once

#include "archive/FoldedTexts.h"

#include <functional>

/**
 * Groups of titles that belong together, for all titles at once: exactly those that one search per title gives, title
 * by title, each row in the first group that holds it. Groups of one row, when the rest stood in earlier ones, stay.
 * Pure functions for any thread. Rows count from 0 in the order in which they are searched for.
 */
namespace kalvo::DuplicateGroups {

using Groups = std::vector<std::vector<std::uint32_t>>;
/** Told now and then how far it is; false ends the search, whose result then means nothing. */
using Tell = std::function<bool(int percent)>;

/**
 * Rows whose path holds the file name of another. paths: folded, by row. order: all rows in the order that the rows of
 * a group have. An apostrophe or "*" in the name searched for stands for any characters.
 */
Groups ByFileName(const FoldedTexts& paths, const std::vector<std::uint32_t>& order, const Tell& tell);

/** Rows with the same title; a group's rows ascend. titles: folded, by row. Wildcards as with file names. */
Groups ByTitle(const FoldedTexts& titles, const Tell& tell);

} // namespace kalvo::DuplicateGroups

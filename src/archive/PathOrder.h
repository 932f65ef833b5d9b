#pragma once

#include "archive/TextDictionary.h"

namespace kalvo {

/**
 * All titles in the order of their full paths' sort keys, without comparing whole paths: each folder's files are sorted
 * by name and merged with its subfolders. codes: the folder of each title; the dictionary's ranks are settled.
 */
std::vector<std::uint32_t> PathOrder(const TextDictionary& folders, std::span<const std::uint32_t> codes,
                                     const FoldedTexts& names);

} // namespace kalvo

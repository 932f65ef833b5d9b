#pragma once

#include <QString>

/** Parts of paths. Separators are "/" and "\", whatever the platform. */
namespace kalvo::FileName {

/** What follows the last separator; the whole text when there is none. */
QString Last(const QString& path);

/** Up to and including the last separator; empty when there is none. */
QString Folder(const QString& path);

/** Whether the last four characters are ".mp3" or ".ogg", in any case. */
bool IsMusic(const QString& path);

/** A line break or the like, which files of texts and records cannot hold. */
bool HasControls(const QString& path);

/** German: why a path is refused that has control characters or more than so many characters. */
QString Refusal(const QString& path, qsizetype longest);

/** What is shown of a title: its name; where it has neither that nor an artist, its file's. */
QString ShownTitle(const QString& title, const QString& artist, const QString& path);

/** Without a ".mp3" or ".ogg" at its end. */
QString WithoutMusicExtension(const QString& name);

} // namespace kalvo::FileName

#pragma once

#include "app/Desk.h"

namespace kalvo::gallery {

class StageAudio;

/**
 * What a desk holds on a Saturday night: archive, lists, charts, wishes, samples, jingles and the evening so far.
 * Everything is invented.
 */
namespace GalleryContent {

/** Files that are read when the main window is built; before that. music: files of WriteDemoTitles(), here as below. */
void WriteFiles(Desk& desk, const QStringList& music);
/** Once the archive has its index. Further titles get empty files beside the music. */
void FillArchive(Desk& desk, const QStringList& music);
/** Lists, a title on air that hands over in two seconds and one that waits. */
void PutOnAir(Desk& desk, StageAudio& audio, const QStringList& music);

} // namespace GalleryContent

} // namespace kalvo::gallery

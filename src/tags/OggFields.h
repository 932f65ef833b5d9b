#pragma once

#include <QStringList>

namespace kalvo::OggFields {

/** Names of the Ogg comments that are read as this frame, the preferred one first; empty when there are none. */
QStringList Names(quint32 frame);
QStringList RatingNames();
/** The text frames that Ogg comments are read as. */
const QList<quint32>& TextFrames();

} // namespace kalvo::OggFields

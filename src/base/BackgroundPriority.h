#pragma once

namespace kalvo {

/**
 * Puts the calling thread, and the threads that it will start, behind all others: least share of the processor, and
 * the disk only while nobody else wants it. For work that must never disturb the music. Stays so for the thread's life.
 */
void StepBehindMusic();

} // namespace kalvo

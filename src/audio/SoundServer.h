#pragma once

namespace kalvo::audio {

/**
 * Whether the system's sound server can be used. One that has no device at all, the only card having been pulled out,
 * names no standard device either, and SDL ends the program reading that name: it must not be started then. Also true
 * where no server answers, since SDL goes other ways then, or where another driver is asked for. Waits for three
 * seconds at most; not for the control thread.
 */
bool SoundServerHasDevices();

} // namespace kalvo::audio

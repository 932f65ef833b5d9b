#pragma once

namespace kalvo {

/**
 * The sampler pad of a key of the numeric keypad, 1 to 9, with NumLock on or off; 0 for every other key. `keypad`:
 * whether the key lies there. Without NumLock its digits come as cursor keys.
 */
int PadOfKey(int key, bool keypad);

} // namespace kalvo

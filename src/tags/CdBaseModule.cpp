#include "tags/DiscFolder.h"

#include <exception>

/** The module's one entry; null when memory is short. The caller owns the database. */
extern "C" __attribute__((visibility("default"))) kalvo::DiscDatabase* CreateDiscDatabase() {
    try {
        static const kalvo::SystemClock clock;
        return new kalvo::DiscFolder(clock);
    } catch (const std::exception&) {
        return nullptr;
    }
}

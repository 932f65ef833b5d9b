#pragma once

#include "archive/Archive.h"

namespace kalvo {

/** While one lives, added titles are committed in batches (500 titles or 100 ms); its end commits the rest. */
class Archive::Session {
public:
    explicit Session(Archive& archive) : archive_(archive) { archive_.database_.BeginBatch(); }
    ~Session() {
        archive_.database_.EndBatch();
        archive_.ReloadAfterLoss();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** For pauses between titles: commits when the time is up. */
    void CommitIfDue() { archive_.database_.CommitIfDue(); }

private:
    Archive& archive_;
};

} // namespace kalvo

#pragma once

#include <tfilestream.h>

#include <vector>

namespace kalvo {

/**
 * A file that is read with bounds, so that no content can make reading take for ever or fill the memory: in all no more
 * than kBudget bytes are given out, then it is at its end. Parts of an ID3v2 tag that would unfold without bounds
 * (compressed frames, chapters within chapters) are given out under a name that is passed over.
 */
class GuardedStream : public TagLib::FileStream {
public:
    static constexpr unsigned long kBudget = 64UL << 20;

    /** Opened for reading only; path: the file system's raw bytes. */
    explicit GuardedStream(const char* path);

    TagLib::ByteVector readBlock(unsigned long length) override;

    /** Whether something was hidden or the budget was used up: the tag is not to be written then. */
    bool HasHidden() const { return !patches_.empty() || left_ == 0; }

private:
    struct Patch {
        long position;
        char byte;
    };
    void FindHazards();

    unsigned long left_ = kBudget;
    std::vector<Patch> patches_; ///< of the file's bytes, as they are given out
};

} // namespace kalvo

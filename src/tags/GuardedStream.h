#pragma once

#include <QByteArray>
#include <QFile>

#include <tiostream.h>

#include <array>
#include <string>
#include <vector>

namespace kalvo {

/**
 * A file that is read with bounds, so that no content can make reading take for ever or fill the memory: in all no more
 * than kBudget bytes are given out, then it is at its end. Parts of an ID3v2 tag that would unfold without bounds
 * (compressed frames, chapters within chapters) are given out under a name that is passed over. Readers of tags take a
 * few bytes here and a few there: small reads are served from the pages read last. Nothing can be written.
 */
class GuardedStream final : public TagLib::IOStream {
public:
    static constexpr unsigned long kBudget = 64UL << 20;

    /** Opened for reading only. */
    explicit GuardedStream(const QString& path);

    /** Whether something was hidden or the budget was used up: the tag is not to be written then. */
    bool HasHidden() const { return !patches_.empty() || left_ == 0; }

    TagLib::FileName name() const override { return name_.c_str(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return true; }
    bool isOpen() const override { return file_.isOpen(); }
    void seek(long offset, Position from = Beginning) override;
    long tell() const override { return position_; }
    long length() override { return length_; }
    void truncate(long length) override;

private:
    struct Patch {
        long position;
        char byte;
    };
    struct Page {
        long number = -1;
        QByteArray bytes;
    };
    void FindHazards();
    void Read(char* bytes, long position, long length);
    const QByteArray& PageAt(long number);

    std::string name_;
    QFile file_;
    long length_ = 0;
    long position_ = 0;
    unsigned long left_ = kBudget;
    std::array<Page, 8> pages_;
    std::size_t oldest_ = 0;     ///< of pages_
    std::vector<Patch> patches_; ///< of the file's bytes, as they are given out
};

} // namespace kalvo

#pragma once

#include <QString>

namespace kalvo {

/**
 * A file that is changed by way of a copy beside it. Until Commit() has succeeded the file itself is untouched; a copy
 * that is not committed goes with the object, one that a killed program has left goes with the next replacement in
 * the same folder.
 */
class FileReplacement {
public:
    /** Links are followed. */
    explicit FileReplacement(const QString& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /** Makes the copy, with the file's permissions. False with a Reason() when that is not possible. */
    bool Prepare();
    const QString& CopyPath() const { return copy_; }
    /** Syncs the copy and puts it in the file's place. False with a Reason(), the file being as before. */
    bool Commit();

    /** German, for the user. */
    const QString& Reason() const { return reason_; }

private:
    bool Fail(const QString& reason);
    void RemoveLeftovers() const;

    QString path_;
    QString copy_;
    QString reason_;
};

} // namespace kalvo

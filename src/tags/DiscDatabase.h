#pragma once

#include "tags/DiscEntry.h"

#include <QString>

#include <optional>

namespace kalvo {

/**
 * The disc database as its users see it: an abstract class, loaded at run time as a module. It keeps what is known of
 * audio CDs in the folder "\CdArchiv\", a text file per disc, named by the disc id. UI thread.
 */
class DiscDatabase {
public:
    DiscDatabase() = default;
    DiscDatabase(const DiscDatabase&) = delete;
    DiscDatabase& operator=(const DiscDatabase&) = delete;
    virtual ~DiscDatabase() = default;

    /** Low word major, high word minor: "2.0" is 0x00000002. */
    virtual quint32 GetVersion() const = 0;
    /** The disc id of a table of contents; empty when it is not valid. */
    virtual QString DiscId(const DiscToc& toc) const = 0;

    /**
     * What is known of the disc, from the folder or a folder in it (a genre's). Discs with the same id are told apart
     * by their tables; an entry without one is taken when none fits. Files that cannot be read are passed over.
     */
    virtual std::optional<DiscEntry> Read(const QString& folder, const DiscToc& toc) const = 0;
    /**
     * Replaces the disc's file atomically, or adds one: "8a0b0c0d", "8a0b0c0d-2" where another disc has the name.
     * A file of that name that is no entry is set aside. The folder is made when missing. The entry's ids are completed
     * by the table's. False when the table is not valid or the file cannot be written; the old entry stays then.
     */
    virtual bool Write(const QString& folder, const DiscToc& toc, const DiscEntry& entry) const = 0;
};

/** Name and type of the module's one entry; the caller owns the database that it returns. */
constexpr const char* kDiscFactoryName = "CreateDiscDatabase";
using DiscFactory = DiscDatabase* (*)();

} // namespace kalvo

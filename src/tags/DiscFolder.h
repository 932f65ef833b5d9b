#pragma once

#include "base/Clock.h"
#include "tags/DiscDatabase.h"

#include <QList>

namespace kalvo {

/** The disc database over files. */
class DiscFolder final : public DiscDatabase {
public:
    /** The clock dates files that are set aside; it outlives the database. */
    explicit DiscFolder(const Clock& clock) : clock_(clock) {}

    quint32 GetVersion() const override { return 0x00000002; }
    QString DiscId(const DiscToc& toc) const override { return toc.DiscId(); }
    std::optional<DiscEntry> Read(const QString& folder, const DiscToc& toc) const override;
    bool Write(const QString& folder, const DiscToc& toc, const DiscEntry& entry) const override;

private:
    const Clock& clock_;
};

} // namespace kalvo
